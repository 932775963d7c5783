#pragma once

#include <krcore/foundation/WeakRef.h>
#include <krcore/live/LiveObject.h>
#include <krcore/values/Variant.h>

namespace krhost {

class Lines;

/// A document on the host's desk: a live object whose host thing can die while scripts still hold
/// it. `close()` ends it, and so does the desk, which has room for two documents and closes the
/// oldest one when a third is opened. Every use of a closed document is error 45.
///
/// ```js
/// var doc = new Document("notes");
/// doc.append("first line");        // returns the number of lines
/// doc.line(0);                     // "first line"; doc.name and doc.length are properties
/// doc.lines[0] = "better";         // the lines as a collection, see `Lines`
/// doc.close();
/// ```
class Document : public KrCore::LiveObject {
public:
    Document();

    int clone(KrCore::LiveObject** result, bool deep) const override;
    int initialize(const KrCore::Array& args, KrCore::Error* err) override;
    KrCore::InfoType getType(int id) override;
    const KrCore::ClassInfo* getClassInfo(int flags) const override;
    int get(int id, KrCore::Variant& result, KrCore::Error* err) const override;
    int put(int id, const KrCore::Variant& value, KrCore::Error* err) override;
    int apply(KrCore::LiveObject& self, int id, const KrCore::Array& args, KrCore::Variant& result,
              KrCore::Error* err) const override;

    /// Borrowed; null for a closed document.
    KrCore::Array* lines() const { return lines_; }

protected:
    ~Document() override;

private:
    class Desk;

    int run(int id, const KrCore::Array& args, KrCore::Variant& result);
    void close();
    void readLines(KrCore::Variant& result) const;

    KrCore::String name_;
    KrCore::Array* lines_ = nullptr;             // owned: the host thing, null once it has died
    mutable KrCore::WeakRef<Lines> linesObject_; // the same one for all who hold it
};

} // namespace krhost
