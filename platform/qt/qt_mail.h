#pragma once
// Mail through xdg-email, which knows the desktop's mail program.
#include "platform/mail.h"

namespace kvo::platform_qt {

class QtMail : public platform::Mail {
public:
    // A mail program that stays in front of xdg-email for longer than `patienceMs` has got its
    // draft; it is not waited for.
    explicit QtMail(int patienceMs = 5000) : m_patienceMs(patienceMs) {}
    platform::MailResult compose(const platform::MailDraft& draft) override;

private:
    int m_patienceMs;
};

} // namespace kvo::platform_qt
