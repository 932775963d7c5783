#include <krcore/files/FileFilter.h>

#include <krcore/text/UnicodeUtils.h>

namespace KrCore {

namespace {

bool isSame(unsigned short left, unsigned short right) {
    return left == right || UnicodeUtils::towupper(left) == UnicodeUtils::towupper(right);
}

/// A "*" first takes nothing; when the rest does not fit, the last one takes a unit more.
bool fits(const String& mask, const String& name) {
    const unsigned short* units = mask.wstr(); // Both end in a 0.
    const unsigned short* at = name.wstr();
    const unsigned short* const end = name.end();
    const unsigned short* star = nullptr;
    const unsigned short* taken = nullptr;
    while (at != end) {
        if (*units == '*') {
            star = ++units;
            taken = at;
        } else if (*units != 0 && (*units == '?' || isSame(*units, *at))) {
            ++units;
            ++at;
        } else if (star) {
            units = star;
            at = ++taken;
        } else {
            return false;
        }
    }
    while (*units == '*')
        ++units;
    return units == mask.end();
}

} // namespace

FileFilter::FileFilter(const String& masks) : masks_(masks) {}

bool FileFilter::matches(const String& name) const {
    String rest(masks_);
    rest.strip();
    if (rest.isEmpty()) return true;
    while (!rest.isEmpty()) {
        String mask = rest.split(';');
        mask.strip();
        if (mask == "*.*" || (!mask.isEmpty() && fits(mask, name))) return true;
    }
    return false;
}

} // namespace KrCore
