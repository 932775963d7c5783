#include "regexp/RegExpData.h"

#include "regexp/RegExpParser.h"

namespace KrCore {

reAtom* RegExpData::makeEmptyRoot() { return new reSubExpr(0, GroupKind::LookAhead); }

RegExpData::RegExpData() : pattern("(?:)"), root(makeEmptyRoot()) {}

RegExpData::RegExpData(const String& source, int givenFlags) : pattern(source), flags(givenFlags) {
    RegExpParser parser(pattern, (flags & RegExp::IgnoreCase) != 0);
    root = parser.parse();
    if (!root) return;
    captureCount = parser.groupCount() + 1;
    quantifierCount = parser.targets().length();
    alternationCount = parser.alternationCount();
    initialTargets = parser.targets();
    for (const reAtom* node = root.get(); node; node = node->next)
        choiceCount += node->isBacktrackable();
    program.compile(*root, captureCount, flags);
    if (!program.isEmpty()) start.compile(program.steps(), (flags & RegExp::MultiLine) != 0);
}

RegExpData::~RegExpData() = default;

} // namespace KrCore
