#pragma once

namespace KrCore::CodePageNumber {

// Code pages that are not simply one or two bytes for each character.
constexpr int firstIso2022 = 50220;
constexpr int lastIso2022Japanese = 50222;
constexpr int iso2022Korean = 50225;
constexpr int iso2022Chinese = 50227;
constexpr int iso2022TraditionalChinese = 50229;
constexpr int lastIso2022 = 50229;
constexpr int eucJapanese = 51932;
constexpr int hz = 52936;
constexpr int gb18030 = 54936;
constexpr int firstIscii = 57002;
constexpr int lastIscii = 57011;
constexpr int utf7 = 65000;
constexpr int utf8 = 65001;

} // namespace KrCore::CodePageNumber
