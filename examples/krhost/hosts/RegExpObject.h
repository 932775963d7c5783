#pragma once

#include <krcore/live/LiveObject.h>
#include <krcore/regexp/RegExp.h>

namespace krhost {

/// A regular expression of the library, which scripts know as `KrRegExp`: how to give scripts a
/// thing that is a value. Between scripts and the library it goes as a `Variant` of kind `RegExp`
/// (`ValueBridge`), so the library always gets a copy and a script always gets another object.
///
/// ```js
/// var pair = new KrRegExp("(\\w+)=(\\d+)", "g");
/// for (var match; (match = pair.exec(text)) !== null;) print(match[1], match[2], match.index);
/// print(pair.replace(text, "$2 $1"));
/// ```
class RegExpObject : public KrCore::LiveObject {
public:
    /// The flag "g". The library keeps it for us, and it means something here alone.
    static constexpr int Global = 1;

    RegExpObject();
    explicit RegExpObject(const KrCore::RegExp& expression);

    const KrCore::RegExp& expression() const { return expression_; }

    int clone(KrCore::LiveObject** result, bool deep) const override;
    int initialize(const KrCore::Array& args, KrCore::Error* err) override;
    KrCore::InfoType getType(int id) override;
    const KrCore::ClassInfo* getClassInfo(int flags) const override;
    int get(int id, KrCore::Variant& result, KrCore::Error* err) const override;
    int put(int id, const KrCore::Variant& value, KrCore::Error* err) override;
    int apply(KrCore::LiveObject& self, int id, const KrCore::Array& args, KrCore::Variant& result,
              KrCore::Error* err) const override;

private:
    bool has(int flag) const { return (expression_.getFlags() & flag) != 0; }

    int read(int id, KrCore::Variant& result) const;
    int run(int id, const KrCore::Array& args, KrCore::Variant& result, KrCore::Error* err);
    int find(int id, const KrCore::Array& args, KrCore::Variant& result);
    int match(const KrCore::String& text, KrCore::Variant& result) const;
    int replace(const KrCore::Array& args, KrCore::Variant& result, KrCore::Error* err) const;
    int split(const KrCore::Array& args, KrCore::Variant& result) const;

    KrCore::RegExp expression_;
    int lastIndex_ = 0;
};

} // namespace krhost
