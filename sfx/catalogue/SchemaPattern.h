#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vemo::sfx {

/// A regular expression in the words of RapidJSON's own engine, which knows neither \d, \w and \s
/// nor groups that capture nothing. Nothing for a pattern that it would misread, and for one on
/// which it would crash: it takes empty alternatives and unbalanced brackets as they come, and
/// repeats a part that may be empty for ever.
///
/// The engine takes time in proportion to the text, where the standard library's recurses with it.
std::optional<std::string> UsablePattern(std::string_view pattern);

} // namespace vemo::sfx
