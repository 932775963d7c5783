#pragma once

#include <krcore/live/LiveObject.h>
#include <krcore/values/Rect.h>
#include <krcore/values/Variant.h>

namespace krhost {

/// A rectangle with a title: how to make a host class scriptable with a table of its properties.
/// The table (in `Box.cpp`) says what there is, `get`, `put` and `apply` say what it does, and
/// everything else is left to the base class.
///
/// ```js
/// var box = new Box(4, 3);      // at 0, 0
/// box.width = 10;               // read/write; box.area is read-only
/// box.resize(2, 2);             // a method; calls the function in box.onResize
/// box.title("Lid").title;       // a property that can also be called, which sets it
/// box["+"](other);              // an operator: the box around both
/// ```
class Box : public KrCore::LiveObject {
public:
    Box();

    int clone(KrCore::LiveObject** result, bool deep) const override;
    int initialize(const KrCore::Array& args, KrCore::Error* err) override;
    KrCore::InfoType getType(int id) override;
    const KrCore::ClassInfo* getClassInfo(int flags) const override;
    int get(int id, KrCore::Variant& result, KrCore::Error* err) const override;
    int put(int id, const KrCore::Variant& value, KrCore::Error* err) override;
    int apply(KrCore::LiveObject& self, int id, const KrCore::Array& args, KrCore::Variant& result,
              KrCore::Error* err) const override;

private:
    double width() const { return bounds_.right - bounds_.left; }
    double height() const { return bounds_.bottom - bounds_.top; }

    int read(int id, KrCore::Variant& result) const;
    int write(int id, const KrCore::Variant& value);
    int setSize(const KrCore::Variant& width, const KrCore::Variant& height);
    int run(int id, const KrCore::Array& args, KrCore::Variant& result, KrCore::Error* err);
    int resize(const KrCore::Array& args, KrCore::Error* err);
    int contains(const KrCore::Array& args, KrCore::Variant& result) const;
    int unite(const KrCore::Array& args, KrCore::Variant& result) const;

    KrCore::Rect bounds_;
    KrCore::String title_;
    KrCore::Variant tags_;     // whatever the script likes to keep here
    KrCore::Variant onResize_; // a script function, or anything else for none
    int serial_;
};

} // namespace krhost
