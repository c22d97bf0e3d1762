#pragma once
// Mail through xdg-email, which knows the desktop's mail program.
#include "platform/mail.h"

#include <QTemporaryDir>

#include <optional>

namespace kvo::platform_qt {

class QtMail : public platform::Mail {
public:
    // A mail program that stays in front of xdg-email for longer than `patienceMs` has got its
    // draft; it is not waited for.
    explicit QtMail(int patienceMs = 5000) : m_patienceMs(patienceMs) {}
    platform::MailResult compose(const platform::MailDraft& draft) override;
    std::string folderForCopies() override;

private:
    std::optional<QTemporaryDir> m_copies; // made with the first mail
    int m_mails = 0;
    int m_patienceMs;
};

} // namespace kvo::platform_qt
