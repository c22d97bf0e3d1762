#include "library/run_filter.h"

#include <algorithm>
#include <array>

namespace kvo::library {

namespace {

constexpr unsigned char smallLetter(unsigned char c) {
    constexpr unsigned char toSmall = 0x20;
    constexpr unsigned char timesSign = 0xD7; // the one sign among the capitals from 0xC0 on
    if (c >= 'A' && c <= 'Z') return c + toSmall;
    if (c >= 0xC0 && c <= 0xDE && c != timesSign) return c + toSmall;
    if (c == 0x8A || c == 0x8C || c == 0x8E) return c + 0x10; // S and Z with caron, OE
    if (c == 0x9F) return 0xFF;                               // Y with diaeresis
    return c;
}

constexpr std::array<char, 256> makeSmallLetters() {
    std::array<char, 256> all{};
    for (unsigned c = 0; c < all.size(); ++c)
        all[c] = static_cast<char>(smallLetter(static_cast<unsigned char>(c)));
    return all;
}

constexpr std::array<char, 256> smallLetters = makeSmallLetters();

} // namespace

std::string folded(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = smallLetters[static_cast<unsigned char>(c)];
    return result;
}

std::vector<std::string> filterWords(std::string_view line) {
    constexpr std::string_view blanks = " \t\r\n\xA0";
    std::vector<std::string> words;
    while (true) {
        const std::size_t start = line.find_first_not_of(blanks);
        if (start == std::string_view::npos) return words;
        line.remove_prefix(start);
        const std::size_t length = std::min(line.find_first_of(blanks), line.size());
        words.push_back(folded(line.substr(0, length)));
        line.remove_prefix(length);
    }
}

bool isNarrower(const std::vector<std::string>& words, const std::vector<std::string>& before) {
    return std::all_of(before.begin(), before.end(), [&](const std::string& old) {
        return std::any_of(words.begin(), words.end(),
            [&](const std::string& word) { return word.find(old) != std::string::npos; });
    });
}

} // namespace kvo::library
