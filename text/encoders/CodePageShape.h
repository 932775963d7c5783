#pragma once

namespace KrCore {

/// How the bytes of a code page group into characters. The system converts whole texts only: it
/// does not say where its input may be cut, and it remembers no state between calls.
class CodePageShape {
public:
    /// The part at the front of a text that can be converted by itself: one character, or, in a
    /// page with states, everything from the initial state back to it.
    struct Stretch {
        enum Kind {
            Closed,
            Open, ///< Reaches the end of the input in whole characters, but in another state.
            Cut,  ///< The end of the input cuts a character off.
            Wrong ///< Breaks off within a character; not every system says so.
        };
        Kind kind;
        int length; ///< in bytes; of a closed one
    };

    explicit CodePageShape(int page);

    /// Whether some bytes change the meaning of those that follow.
    bool hasStates() const { return states_ != States::None; }

    /// For a page without states.
    bool (&leadBytes())[256] { return isLead_; }
    bool hasLeadBytes() const;

    /// `remaining` is above 0.
    Stretch measure(const unsigned char* bytes, int remaining) const;

private:
    enum class States { None, Iso2022, Hz, Utf7, Iscii };

    static States statesOf(int page);
    Stretch measureCharacter(const unsigned char* bytes, int remaining) const;

    const int page_;
    const States states_;
    bool isLead_[256] = {};
};

} // namespace KrCore
