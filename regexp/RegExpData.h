#pragma once

#include "regexp/StartFilter.h"

#include <krcore/containers/SimpleArray.h>
#include <krcore/foundation/Refcountable.h>
#include <krcore/text/String.h>

namespace KrCore {

/// What regular expressions share: a pattern and what was compiled from it. Constant once it is
/// made.
class RegExpData : public Refcountable {
public:
    /// Of a default expression.
    RegExpData();
    /// Compiles.
    RegExpData(const String& source, int givenFlags);

    String pattern;
    SimpleArray initialTargets; ///< Of the quantifiers, by their index.
    OwnedChain root;            ///< Null when the pattern did not compile.
    int captureCount = 0;       ///< Groups and 1 for the whole.
    int quantifierCount = 0;
    int alternationCount = 0;
    int flags = 0;
    int choiceCount = 0; ///< Backtrackable nodes of the top-level chain.

    StraightProgram program; ///< The same pattern as steps; empty when it is not of that kind.
    StartFilter start;       ///< Of the program.

    /// What an empty pattern consists of: it matches the empty text.
    static reAtom* makeEmptyRoot();

protected:
    ~RegExpData() override;

private:
};

} // namespace KrCore
