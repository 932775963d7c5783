#pragma once

#include <atomic>

namespace KrCore::Platform {

/// The name of the system's own character set, in a form that the encoder registry knows.
constexpr int characterSetNameSize = 64;
void getSystemCharacterSet(char (&name)[characterSetNameSize]);

/// Whether the system can convert from and to the code page of this number.
bool isKnownCodePage(int number);

/// The system's converter for one code page. Any thread; no state survives a call.
///
/// Conversions are all or nothing: the input is a whole number of characters, which begins and ends
/// in the initial state of a page that has states. They return the length of the output.
class CodePage {
public:
    /// Results in place of a length: a character that the set does not have or bytes that mean
    /// nothing; output that does not fit.
    static constexpr int invalid = -1;
    static constexpr int tooSmall = -2;

    /// The flags are those of the system calls, where the system takes flags. The page is known.
    CodePage(int number, unsigned int decodeFlags, unsigned int encodeFlags);
    ~CodePage();
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;

    int decode(const char* in, int count, unsigned short* out, int capacity) const;

    /// Ends in the initial state. A null `out` only measures.
    int encode(const unsigned short* in, int count, char* out, int capacity) const;

    /// Which bytes begin a character of several bytes.
    void findLeadBytes(bool (&isLead)[256]) const;

private:
    const int number_;
    const unsigned int decodeFlags_;
    const unsigned int encodeFlags_;
    /// System objects at rest, one for each direction; a call takes it out while it works with it.
    mutable std::atomic<void*> decoder_ = nullptr;
    mutable std::atomic<void*> encoder_ = nullptr;
};

} // namespace KrCore::Platform
