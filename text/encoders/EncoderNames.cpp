#include "text/encoders/EncoderNames.h"

namespace KrCore {

namespace {

/// The digits from `start` to the end as a number, or -1.
int parsePage(const String& name, int start) {
    constexpr int maxPage = 65535;
    int page = 0;
    for (int i = start; i < name.length(); ++i) {
        const int digit = name.wstr()[i] - '0';
        if (digit < 0 || digit > 9) return -1;
        page = page * 10 + digit;
        if (page > maxPage) return -1;
    }
    return start < name.length() ? page : -1;
}

} // namespace

String normalizedEncoderName(const String& name) {
    String result = name;
    result.toUpper();
    result.replaceAll(static_cast<unsigned short>('_'), static_cast<unsigned short>('-'), 0);
    if (result.ncmp("X-", 2) == 0) result.erase(0, 2);
    return result;
}

int codePageNumber(const String& name) {
    if (name.ncmp("CP", 2) == 0) return parsePage(name, 2);
    if (name.ncmp("WINDOWS-", 8) == 0) return parsePage(name, 8);
    return -1;
}

} // namespace KrCore
