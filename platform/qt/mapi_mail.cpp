#include "platform/qt/mapi_mail.h"

#include "platform/qt/text.h"

#include <QDir>
#include <QLibrary>

#include <list>
#include <string>
#include <vector>

namespace kvo::platform_qt {

namespace {

using platform::MailDraft;
using platform::MailOutcome;
using platform::MailResult;

// Asks for a sign-on where one is needed, and shows the draft. The call takes UTF-16 as it is.
constexpr std::uint32_t mapiLogonUi = 0x1;
constexpr std::uint32_t mapiDialog = 0x8;
constexpr std::uint32_t mapiForceUnicode = 0x40000;

constexpr std::uint32_t mapiSent = 0;
constexpr std::uint32_t mapiUserAbort = 1;
constexpr std::uint32_t mapiNotSupported = 26; // what the system says where no program is set up

constexpr std::uint32_t mapiTo = 1;

MailResult mapiResult(std::uint32_t code) {
    if (code == mapiSent || code == mapiUserAbort) return {};
    if (code == mapiNotSupported) {
        return {MailOutcome::noMailProgram, "No mail program is set up on this computer."};
    }
    return {MailOutcome::failed,
        "The mail program could not open the message (code " + std::to_string(code) + ")."};
}

// Keeps the texts of a message for as long as the call reads them.
class MapiTexts {
public:
    const char16_t* add(const QString& text) {
        m_texts.push_back(text.toStdU16String());
        return m_texts.back().c_str();
    }

private:
    std::list<std::u16string> m_texts;
};

QString fromUtf8(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

MapiSend systemMapiSend() {
    return reinterpret_cast<MapiSend>(QLibrary::resolve(QStringLiteral("mapi32"), "MAPISendMailW"));
}

MailResult MapiMail::compose(const MailDraft& draft, const RefusedLater&) {
    if (MailResult missing = attachable(draft); !missing) return missing;
    if (m_send == nullptr) {
        return {MailOutcome::noMailProgram, "This computer has no way to open a mail program."};
    }
    MapiTexts texts;
    MapiMessage message;
    message.subject = texts.add(fromUtf8(draft.subject));
    message.text = texts.add(fromUtf8(draft.body));
    MapiRecipient recipient;
    if (!draft.recipient.empty()) {
        recipient.kind = mapiTo;
        recipient.name = texts.add(fromUtf8(draft.recipient));
        message.recipients = 1;
        message.firstRecipient = &recipient;
    }
    std::vector<MapiFile> files;
    for (const std::string& path : draft.attachments) {
        MapiFile& file = files.emplace_back();
        file.path = texts.add(QDir::toNativeSeparators(shownPath(path)));
    }
    message.files = static_cast<std::uint32_t>(files.size());
    message.firstFile = files.empty() ? nullptr : files.data();
    return mapiResult(m_send(0, 0, &message, mapiLogonUi | mapiDialog | mapiForceUnicode, 0));
}

} // namespace kvo::platform_qt
