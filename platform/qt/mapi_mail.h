#pragma once
// Mail through the simple mail call of Windows, MAPISendMail: the mail program that is set up there
// opens the draft in its own window, and the call comes back when the user has sent or left it.
#include "platform/qt/qt_mail.h"

#include <QString>

#include <cstdint>

namespace kvo::platform_qt {

#ifdef _WIN32
#define KVO_MAPI_CALL __stdcall
#else
#define KVO_MAPI_CALL
#endif

// The call's records, with their fields in the order of the system's. Texts are UTF-16 and end with
// a zero; what is not used is zero.
struct MapiFile {
    std::uint32_t reserved = 0;
    std::uint32_t flags = 0;
    std::uint32_t position = UINT32_MAX; // not inside the text
    const char16_t* path = nullptr;
    const char16_t* name = nullptr; // as the path ends
    const void* type = nullptr;     // as the name says
};
struct MapiRecipient {
    std::uint32_t reserved = 0;
    std::uint32_t kind = 0; // 1: to
    const char16_t* name = nullptr;
    const char16_t* address = nullptr;
    std::uint32_t entrySize = 0;
    const void* entry = nullptr;
};
struct MapiMessage {
    std::uint32_t reserved = 0;
    const char16_t* subject = nullptr;
    const char16_t* text = nullptr;
    const char16_t* kind = nullptr;
    const char16_t* received = nullptr;
    const char16_t* conversation = nullptr;
    std::uint32_t flags = 0;
    const MapiRecipient* sender = nullptr;
    std::uint32_t recipients = 0;
    const MapiRecipient* firstRecipient = nullptr;
    std::uint32_t files = 0;
    const MapiFile* firstFile = nullptr;
};
// Session and window are none. The answer is 0 for a mail that was sent, else a MAPI code.
using MapiSend = std::uint32_t(KVO_MAPI_CALL*)(std::uintptr_t session, std::uintptr_t window,
    const MapiMessage* message, std::uint32_t flags, std::uint32_t reserved);

// The call of this computer, from its library mapi32; nullptr where it has none.
MapiSend systemMapiSend();

class MapiMail : public QtMail {
public:
    explicit MapiMail(MapiSend send = systemMapiSend()) : m_send(send) {}
    // Returns when the user is done with the draft; a draft that the user left unsent was handed
    // over too. Nothing fails later.
    platform::MailResult compose(
        const platform::MailDraft& draft, const RefusedLater& refusedLater) override;

private:
    MapiSend m_send;
};

} // namespace kvo::platform_qt
