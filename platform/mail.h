#pragma once
// Mail through the user's own mail program: the program opens it as a draft, and the user completes
// and sends it.
#include <functional>
#include <string>
#include <vector>

namespace kvo::platform {

// All texts are UTF-8. Lines of the body may end with CR LF or LF.
struct MailDraft {
    std::string recipient; // empty: the user fills it in
    std::string subject;
    std::string body;
    // Whole paths of files, attached under their own names. Some mail programs stumble over commas
    // and quotes in them, so the caller hands over copies with plain names.
    std::vector<std::string> attachments;
};

enum class MailOutcome { handedOver, noMailProgram, failed };

// What became of a draft. `message` is for the user, UTF-8, and says why where it was not handed
// over. Whether a program that took a draft also took its attachments is not known.
struct MailResult {
    MailOutcome outcome = MailOutcome::handedOver;
    std::string message;
    explicit operator bool() const { return outcome == MailOutcome::handedOver; }
};

class Mail {
public:
    virtual ~Mail() = default;
    // What comes of a mail program that was slow to say that it cannot take a draft.
    using RefusedLater = std::function<void(const MailResult& why)>;
    // Opens the draft in the mail program. Returns as soon as that has taken it, or has it in work
    // for a while; events run meanwhile. On failure no mail program has got anything. Where one in
    // work fails later, `refusedLater` is told out of the event loop, if it is not empty.
    [[nodiscard]] virtual MailResult compose(
        const MailDraft& draft, const RefusedLater& refusedLater) = 0;
    // A new empty folder for the copies that one draft attaches. Nobody else reads it, and it goes
    // with the program: a mail program reads an attachment as late as when it sends it. Empty where
    // none can be made.
    [[nodiscard]] virtual std::string folderForCopies() = 0;
};

} // namespace kvo::platform
