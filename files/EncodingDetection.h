#pragma once

namespace KrCore {

/// What the first bytes of a file say about its encoding.
struct DetectedEncoding {
    const char* name = nullptr; ///< Null when nothing can be told.
    int markLength = 0;         ///< Bytes in front that are no text.
    bool isMarked = false;      ///< A byte-order mark says so.
};

/// How much of a file decides; of a longer one, sequences that begin in front of `scannedBytes`.
inline constexpr int detectionBytes = 2048;
inline constexpr int scannedBytes = 2041;

/// Judges the first bytes of a file, `detectionBytes` of them or all: by a byte-order mark, by the
/// zero bytes that plain text has in the wide encodings, or because it is UTF-8.
///
/// Kept: the mark of UCS-4 in big-endian order is left to the decoder, and the scan takes the long
/// forms of UTF-8 that the decoder refuses (held by EncodingDetection.KnowsMarksAndPatterns). Plain
/// ASCII tells nothing.
DetectedEncoding detectEncoding(const char* bytes, int count);

} // namespace KrCore
