#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace krhost {

/// Pieces of TypeScript that are made of texts from outside, all in UTF-8.
namespace TypeScriptText {

/// Whether a class, function or variable can have this name.
bool isDeclarable(std::string_view name);
/// The text in double quotes.
std::string quoted(std::string_view text);
/// The name as that of a member, in quotes where it is no identifier.
std::string memberName(std::string_view name);
/// A name for a parameter that none of `others` has.
std::string parameterName(std::string_view name, const std::vector<std::string>& others);

/// The text as the comment in front of a declaration, in lines that begin with `indent`. Nothing
/// in it ends the comment. Empty for an empty text.
std::string comment(std::string_view text, std::string_view indent);

} // namespace TypeScriptText

} // namespace krhost
