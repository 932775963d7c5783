#pragma once

namespace KrCore {

class Encoder;
class String;

/// Replaces `result` by the decoded bytes and returns the encoder's error code; on failure `result`
/// stays as it was. Without `flush` a sequence that is cut off at the end is left out.
int decodeBytes(const char* bytes, int count, const Encoder& encoder, bool flush, String& result);

} // namespace KrCore
