#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Root.h>
#include <krcore/text/String.h>

namespace KrCore {

/// Chooses files by name: masks like `*.txt;*.md`, of which one has to fit. In a mask "*" stands
/// for any units, also none, and "?" for one unit; everything else for itself in any case. `*.*`
/// fits every name, as people expect of it, and so does no mask at all. Blanks around a mask do not
/// count.
class KR_API FileFilter : public Root {
public:
    explicit FileFilter(const String& masks = String());

    const String& getMasks() const { return masks_; }
    /// Takes time in proportion to the lengths of name and masks multiplied, at most.
    bool matches(const String& name) const;

private:
    String masks_;
};

} // namespace KrCore
