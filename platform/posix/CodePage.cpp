#include "platform/CodePage.h"

#include <iconv.h>
#include <langinfo.h>
#include <locale.h>

#include <bit>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdio>
#include <cstring>

namespace KrCore::Platform {

namespace {

struct PageName {
    int number;
    const char* name;
};

/// The pages whose iconv name is not "CP" and the number.
constexpr PageName pageNames[] = {
    {37, "CP037"},
    {10000, "MACINTOSH"},
    {10007, "MAC-CYRILLIC"},
    {10017, "MACUKRAINIAN"},
    {10029, "MAC-CENTRALEUROPE"},
    {20127, "US-ASCII"},
    {20866, "KOI8-R"},
    {21866, "KOI8-U"},
    {28591, "ISO-8859-1"},
    {28592, "ISO-8859-2"},
    {28593, "ISO-8859-3"},
    {28594, "ISO-8859-4"},
    {28595, "ISO-8859-5"},
    {28596, "ISO-8859-6"},
    {28597, "ISO-8859-7"},
    {28598, "ISO-8859-8"},
    {28599, "ISO-8859-9"},
    {28600, "ISO-8859-10"},
    {28601, "ISO-8859-11"},
    {28603, "ISO-8859-13"},
    {28604, "ISO-8859-14"},
    {28605, "ISO-8859-15"},
    {28606, "ISO-8859-16"},
    {50220, "ISO-2022-JP"},
    {50221, "ISO-2022-JP-3"},
    {50222, "ISO-2022-JP-3"},
    {50225, "ISO-2022-KR"},
    {50227, "ISO-2022-CN"},
    {51932, "EUC-JP"},
    {51936, "EUC-CN"},
    {51949, "EUC-KR"},
    {54936, "GB18030"},
    {65000, "UTF-7"},
    {65001, "UTF-8"},
};

/// The pages whose iconv name is "CP" and the number. iconv knows more such names, but not all of
/// them mean the page that Windows has under the number, and some have states of their own.
constexpr int numberedPages[] = {
    437,  500,  737,  775,  850,  852,  855,  857,  858,  860,  861,  862,  863,  864,  865,  866,
    869,  870,  874,  875,  932,  936,  949,  950,  1026, 1047, 1140, 1141, 1142, 1143, 1144, 1145,
    1146, 1147, 1148, 1149, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258, 1361,
};

constexpr int nameSize = 32;

bool findName(int number, char (&name)[nameSize]) {
    for (const PageName& page : pageNames) {
        if (page.number != number) continue;
        std::snprintf(name, sizeof name, "%s", page.name);
        return true;
    }
    for (const int page : numberedPages) {
        if (page != number) continue;
        std::snprintf(name, sizeof name, "CP%d", number);
        return true;
    }
    return false;
}

constexpr const char* unitSet =
    std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";

struct SetName {
    const char* locale;
    const char* registry;
};

/// The sets that locales call by a name which the encoder registry does not know, or has given to
/// another page.
constexpr SetName setNames[] = {
    {"ANSI_X3.4-1968", "UTF-8"}, // That of the "C" locale, which says nothing about texts.
    {"ISO-8859-3", "CP28593"},   {"KOI8-R", "CP20866"},  {"KOI8-U", "CP21866"},
    {"TIS-620", "CP874"},        {"GB18030", "CP54936"},
};

bool isFailure(iconv_t descriptor) { return descriptor == reinterpret_cast<iconv_t>(-1); }

/// Takes a descriptor out of its slot for the time of one conversion, or opens one when another
/// thread has it. A descriptor holds the state of a conversion, so two threads cannot share it.
class DescriptorLoan {
public:
    DescriptorLoan(std::atomic<void*>& slot, const char* to, const char* from)
        : slot_(slot), descriptor_(slot.exchange(nullptr)) {
        if (!descriptor_) descriptor_ = iconv_open(to, from);
    }
    ~DescriptorLoan() {
        if (!isOpen()) return;
        void* empty = nullptr;
        if (!slot_.compare_exchange_strong(empty, descriptor_)) iconv_close(descriptor_);
    }
    DescriptorLoan(const DescriptorLoan&) = delete;
    DescriptorLoan& operator=(const DescriptorLoan&) = delete;

    bool isOpen() const { return !isFailure(descriptor_); }
    iconv_t get() const { return descriptor_; }

private:
    std::atomic<void*>& slot_;
    iconv_t descriptor_;
};

void closeSlot(std::atomic<void*>& slot) {
    if (iconv_t descriptor = slot.exchange(nullptr)) iconv_close(descriptor);
}

/// Converts all of `in`, what the converter holds back and its way back to the initial state
/// included. Returns the number of bytes; a null `out` only measures.
std::ptrdiff_t convert(iconv_t descriptor, const void* in, std::size_t inLeft, void* out,
                       std::size_t capacity) {
    char scratch[1024];
    char* source = static_cast<char*>(const_cast<void*>(in)); // Not written by iconv.
    std::size_t total = 0;
    iconv(descriptor, nullptr, nullptr, nullptr, nullptr);
    for (bool isEnding = false;;) {
        char* target = out ? static_cast<char*>(out) + total : scratch;
        const std::size_t room = out ? capacity - total : sizeof scratch;
        std::size_t left = room;
        const std::size_t replaced = iconv(descriptor, isEnding ? nullptr : &source,
                                           isEnding ? nullptr : &inLeft, &target, &left);
        total += room - left;
        if (total > std::size_t{INT_MAX}) return CodePage::tooSmall;
        if (replaced == static_cast<std::size_t>(-1)) {
            if (errno != E2BIG) return CodePage::invalid;
            if (out) return CodePage::tooSmall;
        } else if (replaced != 0) {
            return CodePage::invalid;
        } else if (isEnding) {
            return static_cast<std::ptrdiff_t>(total);
        } else {
            isEnding = true;
        }
    }
}

} // namespace

void getSystemCharacterSet(char (&name)[characterSetNameSize]) {
    // The process may never have called setlocale, so the user's locale is opened apart.
    std::snprintf(name, sizeof name, "UTF-8");
    const locale_t user = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (!user) return;
    const char* set = nl_langinfo_l(CODESET, user);
    for (const SetName& known : setNames) {
        if (std::strcmp(set, known.locale) == 0) set = known.registry;
    }
    std::snprintf(name, sizeof name, "%s", set);
    freelocale(user);
}

bool isKnownCodePage(int number) {
    char name[nameSize];
    if (!findName(number, name)) return false;
    std::atomic<void*> decoder = nullptr;
    std::atomic<void*> encoder = nullptr;
    const bool isKnown = DescriptorLoan(decoder, unitSet, name).isOpen() &&
                         DescriptorLoan(encoder, name, unitSet).isOpen();
    closeSlot(decoder);
    closeSlot(encoder);
    return isKnown;
}

// The flags are for another system's calls: iconv always refuses what it cannot convert.
CodePage::CodePage(int number, unsigned int decodeFlags, unsigned int encodeFlags)
    : number_(number), decodeFlags_(decodeFlags), encodeFlags_(encodeFlags) {
    static_cast<void>(decodeFlags_);
    static_cast<void>(encodeFlags_);
}

CodePage::~CodePage() {
    closeSlot(decoder_);
    closeSlot(encoder_);
}

int CodePage::decode(const char* in, int count, unsigned short* out, int capacity) const {
    char name[nameSize];
    if (count <= 0) return 0;
    if (capacity <= 0) return tooSmall;
    if (!findName(number_, name)) return invalid;
    const DescriptorLoan loan(decoder_, unitSet, name);
    if (!loan.isOpen()) return invalid;
    const std::ptrdiff_t byteCount =
        convert(loan.get(), in, static_cast<std::size_t>(count), out,
                static_cast<std::size_t>(capacity) * sizeof(unsigned short));
    return static_cast<int>(byteCount < 0 ? byteCount : byteCount / 2);
}

int CodePage::encode(const unsigned short* in, int count, char* out, int capacity) const {
    char name[nameSize];
    if (count <= 0) return 0;
    if (out && capacity <= 0) return tooSmall;
    if (!findName(number_, name)) return invalid;
    const DescriptorLoan loan(encoder_, name, unitSet);
    if (!loan.isOpen()) return invalid;
    return static_cast<int>(convert(loan.get(), in,
                                    static_cast<std::size_t>(count) * sizeof(unsigned short), out,
                                    static_cast<std::size_t>(capacity)));
}

void CodePage::findLeadBytes(bool (&isLead)[256]) const {
    char name[nameSize];
    for (bool& lead : isLead)
        lead = false;
    if (!findName(number_, name)) return;
    const DescriptorLoan loan(decoder_, unitSet, name);
    if (!loan.isOpen()) return;
    for (int byte = 0; byte < 256; ++byte) {
        char in = static_cast<char>(byte);
        char* source = &in;
        std::size_t inLeft = 1;
        char out[16];
        char* target = out;
        std::size_t outLeft = sizeof out;
        iconv(loan.get(), nullptr, nullptr, nullptr, nullptr);
        const std::size_t result = iconv(loan.get(), &source, &inLeft, &target, &outLeft);
        isLead[byte] = result == static_cast<std::size_t>(-1) && errno == EINVAL;
    }
}

} // namespace KrCore::Platform
