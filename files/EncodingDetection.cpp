#include "files/EncodingDetection.h"

#include <algorithm>

namespace KrCore {

namespace {

/// The bytes of a file, -1 behind its end.
class FirstBytes {
public:
    FirstBytes(const char* bytes, int count) : bytes_(bytes), count_(count) {}
    int operator[](int index) const {
        return index < count_ ? static_cast<unsigned char>(bytes_[index]) : -1;
    }
    int count() const { return count_; }

private:
    const char* const bytes_;
    const int count_;
};

DetectedEncoding detectMark(const FirstBytes& b) {
    if (b[0] == 0xFF && b[1] == 0xFE && b[2] == 0 && b[3] == 0) return {"UCS-4LE", 4, true};
    if (b[0] == 0xFF && b[1] == 0xFE) return {"UCS-2LE", 2, true};
    if (b[0] == 0xFE && b[1] == 0xFF) return {"UCS-2BE", 2, true};
    if (b[0] == 0xEF && b[1] == 0xBB && b[2] == 0xBF) return {"UTF8", 3, true};
    if (b[0] == 0 && b[1] == 0 && b[2] == 0xFE && b[3] == 0xFF) return {"UCS-4BE", 0, true};
    return {};
}

DetectedEncoding detectPattern(const FirstBytes& b) {
    if (b[0] == 0 && b[1] > 0 && b[2] == 0 && b[3] > 0) return {"UCS-2BE"};
    if (b[0] == 0 && b[1] == 0 && b[2] >= 0 && b[3] > 0) return {"UCS-4BE"};
    if (b[0] > 0 && b[1] == 0 && b[2] > 0 && b[3] == 0) return {"UCS-2LE"};
    if (b[0] > 0 && b[1] >= 0 && b[2] == 0 && b[3] == 0) return {"UCS-4LE"};
    return {};
}

/// Length of the sequence that a byte leads, long forms included; 0 when it leads none.
int sequenceLength(int lead) {
    if (lead < 0x80) return 1;
    if (lead < 0xC0 || lead > 0xFD) return 0;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF8 ? 4 : lead < 0xFC ? 5 : 6;
}

bool isUtf8(const FirstBytes& b) {
    const int end = std::min(b.count(), scannedBytes);
    bool hasSequence = false;
    for (int at = 0; at < end;) {
        const int length = sequenceLength(b[at]);
        if (length == 0) return false;
        for (int next = 1; next < length; ++next) {
            if (b[at + next] < 0 || (b[at + next] & 0xC0) != 0x80) return false;
        }
        hasSequence |= length > 1;
        at += length;
    }
    return hasSequence;
}

} // namespace

DetectedEncoding detectEncoding(const char* bytes, int count) {
    const FirstBytes first(bytes, count);
    const DetectedEncoding mark = detectMark(first);
    if (mark.name) return mark;
    const DetectedEncoding pattern = detectPattern(first);
    if (pattern.name) return pattern;
    return isUtf8(first) ? DetectedEncoding{"UTF-8"} : DetectedEncoding{};
}

} // namespace KrCore
