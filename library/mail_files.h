#pragma once
// Runs as the attachments of a mail: copies with plain names in a folder of their own, and the
// draft that goes to the user's mail program.
#include "core/run_index.h"
#include "platform/files.h"
#include "platform/mail.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kvo::library {

// What the mail says of the program.
struct MailProduct {
    std::string version; // its three numbers joined by "."
    std::string address; // the makers' web address
};

struct MailOrder {
    std::string appFolder;
    std::vector<core::RunIndexEntry> runs; // in the order of their attachments
    std::string text;                      // the user's own, UTF-8; its lines end with LF
    MailProduct product;
};

// What became of a mail: the draft and the folder of its copies are there on failure too, so that
// the user can send it in another way. The message is never empty where it was not handed over.
struct SentMail {
    platform::MailResult result;
    platform::MailDraft draft;
    std::string folder; // empty where there are no whole copies
};

// Copies each run and its info file, where it has one, and hands them to the mail program. A run
// that cannot be copied fails the whole, and no mail program gets anything. `refusedLater` gets a
// mail that counted as handed over, and that the mail program refused after all.
SentMail SendFile(const MailOrder& order, platform::Files& files, platform::Mail& mail,
    const std::function<void(const SentMail&)>& refusedLater);

// What the user is told of a mail that the mail program took, and of one that it did not; UTF-8.
std::string handedOverText(const SentMail& sent);
std::string notHandedOverText(const SentMail& sent);

// The text of the mail; its lines end with CR LF. The version's last two numbers have no point
// between them.
std::string mailBody(const MailProduct& product, std::string_view text);

// A name that no mail program stumbles over: letters, digits, ".", "_" and "-" of `name`, "_" for
// all others, no "." or "-" in front. In front of it a number where it, or its info file, is in
// `taken` already, without regard to case; both are in it afterwards.
std::string plainName(std::string_view name, std::set<std::string>& taken);

} // namespace kvo::library
