#pragma once

#include <krcore/live/LiveArray.h>

namespace krhost {

/// An array of the host's: how to give scripts elements that an object keeps itself. Everything
/// about elements is done by the base class; this one adds what a class has besides.
///
/// ```js
/// var list = new List("a", "b");
/// list[2] = "c";                // list.length is 3 now; it can be set, too
/// list.add("d", "e");           // a method
/// Array.prototype.map.call(list, function (text) { return text + "!"; });
/// ```
class List : public KrCore::LiveArray {
public:
    List();

    int clone(KrCore::LiveObject** result, bool deep) const override;
    /// The arguments are the elements.
    int initialize(const KrCore::Array& args, KrCore::Error* err) override;
    KrCore::InfoType getType(int id) override;
    const KrCore::ClassInfo* getClassInfo(int flags) const override;
    int apply(KrCore::LiveObject& self, int id, const KrCore::Array& args, KrCore::Variant& result,
              KrCore::Error* err) const override;

private:
    int run(int id, const KrCore::Array& args, KrCore::Variant& result, KrCore::Error* err);
};

} // namespace krhost
