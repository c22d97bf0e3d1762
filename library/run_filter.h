#pragma once
// The filter line of the chooser: words that must all occur in what is known of a run, in any order
// and in any case. Texts have one byte a character, as files have them.
#include <string>
#include <string_view>
#include <vector>

namespace kvo::library {

// A text as the filter compares it: capitals become small letters, those of the code page beyond
// ASCII too. The length stays.
std::string folded(std::string_view text);
// The words of a filter line, folded. A line of blanks has none.
std::vector<std::string> filterWords(std::string_view line);
// Whether all that has every one of `words` has every one of `before` too, so that who looks for
// `words` need only look among what was found for `before`.
bool isNarrower(const std::vector<std::string>& words, const std::vector<std::string>& before);

} // namespace kvo::library
