#pragma once

#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/LiveObject.h>
#include <krcore/xml/XML.h>

namespace krhost {

/// An XML node or a list of nodes for scripts, who know it as `XML`: how to expose objects whose
/// properties come and go with data that the host does not own alone.
///
/// ```js
/// var shop = new XML("<shop><item id='7'>Tea</item></shop>");
/// shop.item["@id"] = 8;         // children and attributes by name, as lists
/// shop.item[0];                 // by index: a list's member, an element's child
/// shop.owner = "Ann";           // makes or replaces a child
/// delete shop.item;
/// ```
///
/// Children are asked for whenever a script names them, so nothing about them is remembered here.
class XMLNode : public KrCore::LiveObject {
public:
    XMLNode();

    int clone(KrCore::LiveObject** result, bool deep) const override;
    /// Parses: a text, then whether to ignore white space, comments and processing instructions.
    int initialize(const KrCore::Array& args, KrCore::Error* err) override;
    int getIDForName(const KrCore::String& name, int& id, KrCore::InfoType& kind,
                     int flags) const override;
    int createIDForName(const KrCore::String& name, int& id, int flags) override;
    int getNameForID(int id, KrCore::String& name, int flags) const override;
    int enumerate(KrCore::SimpleArray& ids, int flags) const override;
    KrCore::InfoType getType(int id) override;
    const KrCore::ClassInfo* getClassInfo(int flags) const override;
    int get(int id, KrCore::Variant& result, KrCore::Error* err) const override;
    int put(int id, const KrCore::Variant& value, KrCore::Error* err) override;
    int deleteID(int id) override;
    int apply(KrCore::LiveObject& self, int id, const KrCore::Array& args, KrCore::Variant& result,
              KrCore::Error* err) const override;

private:
    using Node = KrCore::InterfacePtr<KrCore::XML>;

    bool has(const KrCore::String& name) const;
    int read(int id, KrCore::Variant& result) const;
    int write(const KrCore::String& name, const KrCore::Variant& value);
    int removeAt(int index);
    int run(int id, const KrCore::Array& args, KrCore::Variant& result);
    int navigate(int id, const KrCore::Array& args, KrCore::Variant& result) const;
    int change(int id, const KrCore::Array& args, KrCore::Variant& result);
    /// Makes the result an object for a node of this tree; undefined for null.
    int answer(const Node& node, KrCore::Variant& result) const;
    int answerList(KrCore::XML* list, KrCore::Variant& result) const;

    Node node_;
    Node tree_; // the whole tree, which lives as long as a script holds a part of it
};

} // namespace krhost
