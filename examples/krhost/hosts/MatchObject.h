#pragma once

#include <krcore/live/LiveArray.h>
#include <krcore/regexp/Capture.h>
#include <krcore/text/String.h>

#include <vector>

namespace krhost {

class MatchSearch;

/// What `KrRegExp.exec` finds; scripts know it as `KrMatch`. The elements are the texts of the
/// whole match and of the groups.
class MatchObject : public KrCore::LiveArray {
public:
    MatchObject();
    /// The last match of the search.
    explicit MatchObject(const MatchSearch& search);

    int clone(KrCore::LiveObject** result, bool deep) const override;
    KrCore::InfoType getType(int id) override;
    const KrCore::ClassInfo* getClassInfo(int flags) const override;
    int get(int id, KrCore::Variant& result, KrCore::Error* err) const override;

private:
    KrCore::Array capturesAsObjects() const;

    KrCore::String input_;
    std::vector<KrCore::Capture> captures_;
};

} // namespace krhost
