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
        BeforeText, ///< Where a text stands.
        BeforeUnit, ///< Where one of some units stands.
    };

    void collect(const Step* steps, const Step* step, int depth);
    void addUnit(unsigned short unit);
    void addRun(const Step& run);
    void addFolded(unsigned short upper);
    void settle();
    int nextUnit(const unsigned short* units, int length, int position) const;

    Kind kind_ = Kind::Everywhere;
    bool isOpen_ = false;  ///< A match may begin with any unit, or with none.
    bool hasHigh_ = false; ///< A match may begin with a unit from 256 on.
    bool low_[256] = {};   ///< The units below 256 that a match may begin with.
    int onlyUnit_ = -1;
    const unsigned short* text_ = nullptr; ///< Borrowed from the tree.
    int textLength_ = 0;
};

} // namespace KrCore
