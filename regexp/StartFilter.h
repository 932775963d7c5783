#pragma once

#include "regexp/StraightProgram.h"

namespace KrCore {

/// Tells at which positions of a subject a match of a straight program can begin at all, so that a
/// search need not try the others.
class StartFilter {
public:
    void compile(const Step* steps, bool multiLine);

    /// The first such position at or behind `position`, or -1. `length` is the subject's end.
    int next(const unsigned short* units, int length, int position) const;

private:
    enum class Kind : unsigned char {
        Everywhere,
        AtStart,
        AtLineStarts,
        BeforeText,       ///< Where a text stands.
        BeforeFoldedText, ///< Where two units of a text stand, in upper or lower case.
        BeforeUnit,       ///< Where one of some units stands.
    };

    /// A unit of a text without regard to case: `(unit | caseBit) == lower` holds for it alone.
    struct PlainUnit {
        int offset = 0;
        unsigned short caseBit = 0;
        unsigned short lower = 0;
    };

    bool findPlainUnits(const Step& text);
    void collect(const Step* steps, const Step* step, int& budget);
    void addUnit(unsigned short unit);
    void addRun(const Step& run);
    void addFolded(unsigned short upper);
    void settle();
    int nextUnit(const unsigned short* units, int length, int position) const;
    int nextFoldedText(const unsigned short* units, int length, int position) const;

    Kind kind_ = Kind::Everywhere;
    bool isOpen_ = false;  ///< A match may begin with any unit, or with none.
    bool hasHigh_ = false; ///< A match may begin with a unit from 256 on.
    bool low_[256] = {};   ///< The units below 256 that a match may begin with.
    int onlyUnit_ = -1;
    const unsigned short* text_ = nullptr; ///< Borrowed from the tree.
    int textLength_ = 0;
    PlainUnit first_; ///< Of a folded text.
    PlainUnit last_;
};

} // namespace KrCore
