#pragma once
// Mail through xdg-email, which knows the desktop's mail program.
#include "platform/mail.h"

#include <QTemporaryDir>

#include <optional>

namespace kvo::platform_qt {

// Whether all files that a draft attaches can be read.
platform::MailResult attachable(const platform::MailDraft& draft);

class QtMail : public platform::Mail {
public:
    // What xdg-email has not refused within `patienceMs` counts as handed over: a mail program may
    // stay in front of it. A refusal that comes later is still told.
    explicit QtMail(int patienceMs = 5000) : m_patienceMs(patienceMs) {}
    platform::MailResult compose(
        const platform::MailDraft& draft, const RefusedLater& refusedLater) override;
    std::string folderForCopies() override;

private:
    std::optional<QTemporaryDir> m_copies; // made with the first mail
    int m_mails = 0;
    int m_patienceMs;
};

} // namespace kvo::platform_qt
