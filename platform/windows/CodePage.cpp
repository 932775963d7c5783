#include "platform/CodePage.h"

#include <windows.h>

#include <cstdio>
#include <cstring>

namespace KrCore::Platform {

static_assert(sizeof(wchar_t) == sizeof(unsigned short));

namespace {

constexpr UINT utf7 = 65000;
constexpr UINT utf8 = 65001;
constexpr UINT gb18030 = 54936;
constexpr wchar_t replacementCharacter = 0xFFFD;

/// Some pages refuse to say whether they had a substitute for a character, and refuse the flag that
/// makes an invalid sequence an error.
bool isSilentPage(UINT page) {
    return page >= 57002 || page == gb18030 || page == 52936 || (page >= 50220 && page <= 50229);
}

bool isSurrogate(wchar_t unit) { return (unit & 0xF800) == 0xD800; }

int characterLength(const wchar_t* in, int count) {
    const bool isPair = count > 1 && (in[0] & 0xFC00) == 0xD800 && (in[1] & 0xFC00) == 0xDC00;
    return isPair ? 2 : 1;
}

/// Whether one character comes back from a silent page as it went in.
bool makesRoundTrip(UINT page, DWORD flags, const wchar_t* in, int count) {
    char bytes[32];
    wchar_t units[32];
    const int byteCount =
        WideCharToMultiByte(page, flags, in, count, bytes, sizeof bytes, nullptr, nullptr);
    const int unitCount = MultiByteToWideChar(page, 0, bytes, byteCount, units, 32);
    return unitCount == count && std::memcmp(units, in, sizeof(wchar_t) * count) == 0;
}

/// Whether a silent page has every character of a text. The Unicode ones have all but lone
/// surrogates.
bool hasAll(UINT page, DWORD flags, const wchar_t* in, int count) {
    const bool isUnicode = page == utf7 || page == utf8 || page == gb18030;
    for (int i = 0; i < count;) {
        const int length = characterLength(in + i, count - i);
        if (length == 1 && isSurrogate(in[i])) return false;
        if (!isUnicode && in[i] >= 0x80 && !makesRoundTrip(page, flags, in + i, length))
            return false;
        i += length;
    }
    return true;
}

/// Whether the replacement characters in decoded text were in its source. In well-formed UTF-7,
/// which has several forms of one text, they always were.
bool isFaithful(UINT page, const char* in, int count, const wchar_t* text, int length) {
    if (page == utf7) return true;
    if (!std::wmemchr(text, replacementCharacter, static_cast<std::size_t>(length))) return true;
    char again[1024];
    const int byteCount =
        WideCharToMultiByte(page, 0, text, length, again, sizeof again, nullptr, nullptr);
    return byteCount == count && std::memcmp(again, in, static_cast<std::size_t>(count)) == 0;
}

/// What a length of 0 means: text may consist of switches between states alone.
int resultOfNothing() {
    switch (GetLastError()) {
    case ERROR_SUCCESS:
        return 0;
    case ERROR_INSUFFICIENT_BUFFER:
        return CodePage::tooSmall;
    default:
        return CodePage::invalid;
    }
}

} // namespace

void getSystemCharacterSet(char (&name)[characterSetNameSize]) {
    const UINT page = GetACP();
    if (page == utf8) {
        std::snprintf(name, sizeof name, "UTF-8");
    } else {
        std::snprintf(name, sizeof name, "CP%u", page);
    }
}

bool isKnownCodePage(int number) {
    CPINFO info;
    return GetCPInfo(static_cast<UINT>(number), &info) != 0;
}

CodePage::CodePage(int number, unsigned int decodeFlags, unsigned int encodeFlags)
    : number_(number), decodeFlags_(decodeFlags), encodeFlags_(encodeFlags) {}

CodePage::~CodePage() = default;

int CodePage::decode(const char* in, int count, unsigned short* out, int capacity) const {
    if (count <= 0) return 0;
    if (capacity <= 0) return tooSmall; // A capacity of 0 would ask the system to measure.
    const UINT page = static_cast<UINT>(number_);
    auto* text = reinterpret_cast<wchar_t*>(out);
    SetLastError(ERROR_SUCCESS);
    const int length = MultiByteToWideChar(page, decodeFlags_, in, count, text, capacity);
    if (length == 0) return resultOfNothing();
    if (decodeFlags_ == 0 && !isFaithful(page, in, count, text, length)) return invalid;
    return length;
}

int CodePage::encode(const unsigned short* in, int count, char* out, int capacity) const {
    if (count <= 0) return 0;
    if (out && capacity <= 0) return tooSmall;
    const UINT page = static_cast<UINT>(number_);
    const auto* text = reinterpret_cast<const wchar_t*>(in);
    const bool isSilent = isSilentPage(page);
    if (isSilent && !hasAll(page, encodeFlags_, text, count)) return invalid;
    BOOL isReplaced = FALSE;
    SetLastError(ERROR_SUCCESS);
    const int length = WideCharToMultiByte(page, encodeFlags_, text, count, out, out ? capacity : 0,
                                           nullptr, isSilent ? nullptr : &isReplaced);
    if (length == 0) return resultOfNothing();
    return isReplaced ? invalid : length;
}

void CodePage::findLeadBytes(bool (&isLead)[256]) const {
    CPINFO info = {};
    GetCPInfo(static_cast<UINT>(number_), &info);
    if (number_ == static_cast<int>(gb18030)) {
        // Not told: the system's list has room for characters of two bytes only.
        info.LeadByte[0] = 0x81;
        info.LeadByte[1] = 0xFE;
    }
    for (int byte = 0; byte < 256; ++byte)
        isLead[byte] = false;
    for (int i = 0; i + 1 < MAX_LEADBYTES && info.LeadByte[i] != 0; i += 2) {
        for (int byte = info.LeadByte[i]; byte <= info.LeadByte[i + 1]; ++byte)
            isLead[byte] = true;
    }
}

} // namespace KrCore::Platform
