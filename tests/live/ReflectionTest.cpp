#include "live/LiveFixture.h"
#include "support/FailingAllocator.h"

#include <krcore/files/FileSpec.h>
#include <krcore/xml.h>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

constexpr int library = RequestFlag::Library;

constexpr LivePropertyInfo lampRows[] = {
    {"", 100, 5, "Lamp\tA lamp,color:string"},
    {"power", 1, 2, "number;0;100;60\tWatts\tThe power it draws"},
    {"color", 2, 1, "string\t\tOnly a long description"},
    {"glow", 3, 7,
     "undefined/Color,by:int;;1e999;1\tSteps,on:bool;;;undefined,names:string;;;;array"},
    {"bulbs", 4, 6, "bool/int"},
    {"off", 5, 5, "undefined"},
    {"constructor", 6, 5, nullptr},
    {"prototype", 7, 1, nullptr},
    {"secret", 8, 1 | PropertyFlag::Hidden, "unknownType"},
    {"internal", 9, 1 | PropertyFlag::Internal, nullptr},
    {nullptr, 0, 0, nullptr}};

constexpr const char* lampMembers =
    R"(<elements type="instance">)"
    R"(<property name="power"><shortdesc>Watts</shortdesc><description>The power it draws</description>)"
    R"(<datatype><type>number</type><min>0</min><max>100</max><value>60</value></datatype></property>)"
    R"(<property name="color" rwaccess="readonly"><shortdesc>Only a long description</shortdesc>)"
    R"(<datatype><type>string</type></datatype></property>)"
    R"(<property name="glow" rwaccess="readonly"><datatype><type>Color</type></datatype></property>)"
    R"(<property name="bulbs"><datatype><type>number</type></datatype></property>)"
    R"(<property name="secret" rwaccess="readonly"><datatype><type>any</type></datatype></property>)"
    R"(<method name="glow"><parameters>)"
    R"(<parameter name="by" optional="true"><shortdesc>Steps</shortdesc>)"
    R"(<datatype><type>number</type><value>1</value></datatype></parameter>)"
    R"(<parameter name="on" optional="true"><datatype><type>bool</type></datatype></parameter>)"
    R"(<parameter name="names"><datatype><type>string</type><array/></datatype></parameter>)"
    R"(</parameters></method>)"
    R"(<method name="bulbs"><datatype><type>bool</type></datatype></method>)"
    R"(<method name="off"/></elements>)";

class Lamp : public LiveObject {
public:
    Lamp() : LiveObject("Lamp", true) { propertyManager = &manager; }
    LivePropertyManager manager{lampRows};
};

template <class Info>
std::string described(const Info& info) {
    const auto xml = InterfacePtr<XML>::adopt(info.toXML());
    return xml ? narrow(xml->toXMLString(-1)) : "null";
}

InterfacePtr<const ClassInfo> infoOf(const LiveObject& object, int flags = library) {
    return InterfacePtr<const ClassInfo>::adopt(object.getClassInfo(flags));
}

InterfacePtr<const ServiceInfo> memberOf(const ClassInfo& info, const char* name) {
    return InterfacePtr<const ServiceInfo>::adopt(info.getServiceInfo(name));
}

TEST(ClassDescription, ShowsEverythingThatATableDeclares) {
    const auto lamp = make<Lamp>();
    const std::string whole =
        std::string(
            R"(<classdef name="Lamp" dynamic="true"><elements type="constructor">)"
            R"(<method name="Lamp"><shortdesc>A lamp</shortdesc><parameters>)"
            R"(<parameter name="color"><datatype><type>string</type></datatype></parameter>)"
            R"(</parameters><datatype><type>Lamp</type></datatype></method></elements>)") +
        lampMembers + "</classdef>";
    EXPECT_EQ(described(*infoOf(*lamp)), whole);
    const auto ofTable = make<PropertyManagerClassInfo>(lamp->manager, 0);
    EXPECT_EQ(described(*ofTable), whole);
    // The description belongs to no namespace, whatever the thread's default is.
    const String former = XML::setDefaultNamespaceURI("urn:other");
    EXPECT_EQ(described(*infoOf(*lamp)), whole);
    XML::setDefaultNamespaceURI(former);
}

TEST(ClassDescription, NamesEachMemberOnceAndByTheKindOfItsName) {
    constexpr LivePropertyInfo rows[] = {{"", 0, 5, "undefined,a:int"},
                                         {"largeur", 1, 1 | 0x20000, nullptr},
                                         {"color", 2, 2, "string"},
                                         {"colour", 2, 2, "string"},
                                         {nullptr, 0, 0, nullptr}};
    struct Host : LiveObject {
        explicit Host(LivePropertyManager& manager) : LiveObject("Host", false) {
            propertyManager = &manager;
        }
    };
    LivePropertyManager manager(rows);
    const auto host = make<Host>(manager);
    const char* const expected =
        R"(<elements type="instance"><property name="color"><datatype><type>string</type>)"
        R"(</datatype></property></elements></classdef>)";
    const std::string ofObject = described(*infoOf(*host));
    EXPECT_NE(ofObject.find(expected), std::string::npos) << ofObject;
    EXPECT_NE(ofObject.find(R"("constructor"><method name="Host">)"), std::string::npos);
    const std::string ofTable = described(*make<PropertyManagerClassInfo>(manager, 0));
    EXPECT_NE(ofTable.find(expected), std::string::npos) << ofTable;
}

TEST(ClassDescription, ShowsWhatOneObjectHasBeside) {
    const auto list = make<LiveCollection>("List", 0, true);
    const auto owner = makePlain("Owner");
    owner->put("list", *list, 0, nullptr);
    owner->defineIDForName("run", 20, 5);
    const auto gadget = make<Gadget>();
    constexpr LivePropertyInfo rows[] = {{"size", 30, 1, "int\tBytes"}, {nullptr, 0, 0, nullptr}};
    LivePropertyManager manager(rows);
    gadget->use(&manager);
    owner->addComponent(*gadget);
    EXPECT_EQ(described(*infoOf(*owner)),
              R"(<classdef name="Owner" dynamic="true"><elements type="instance">)"
              R"(<property name="list"><datatype><type>List</type></datatype></property>)"
              R"(<method name="run"><datatype><type>any</type></datatype></method>)"
              R"(<property name="size" rwaccess="readonly"><shortdesc>Bytes</shortdesc>)"
              R"(<datatype><type>number</type></datatype></property></elements></classdef>)");
    EXPECT_EQ(described(*infoOf(*list)),
              R"(<classdef name="List" dynamic="true"><elements type="instance">)"
              R"(<property name="length" rwaccess="readonly"><datatype><type>number</type>)"
              R"(</datatype></property></elements></classdef>)");
    owner->removeComponent(*gadget);
}

/// A class that has more to say than its table.
class TalkativeInfo : public LiveObjectClassInfo {
public:
    explicit TalkativeInfo(LiveObject& object) : LiveObjectClassInfo(object, library) {}
    bool getSuperclass(String& name) const override { return name = superclass, true; }
    InfoState getState() override { return state; }
    bool getDescription(bool longText, String& text) const override {
        return text = longText ? "Long" : "", longText;
    }
    bool getSampleCode(FileSpec& file) const override {
        file = FileSpec("/c/lamp.js");
        return true;
    }
    bool getSampleCode(String& text) const override { return text = "lamp.off()", true; }
    String superclass = "Base";
    InfoState state = InfoState::Ordinary;
};

TEST(ClassDescription, ShowsWhatTheHostSaysOfItsClass) {
    const auto plain = makePlain("Plain");
    const auto info = make<TalkativeInfo>(*plain);
    const struct {
        const char* name;
        const char* element;
    } cases[] = {
        {"Base", R"(<superclass href="#/Base">Base</superclass>)"},
        {"Object", "<superclass>Object</superclass>"},
        {"UnitValue", "<superclass>UnitValue</superclass>"},
        {"base", "<superclass>base</superclass>"},
        {"", ""},
    };
    for (const auto& row : cases) {
        info->superclass = row.name;
        EXPECT_EQ(described(*info), std::string(R"(<classdef name="Plain" dynamic="true">)") +
                                        row.element +
                                        R"(<shortdesc>Long</shortdesc><example href="/c/lamp.js"/>)"
                                        R"(<example>lamp.off()</example></classdef>)");
    }
}

TEST(ClassDescription, ShowsEnumerationsByTheirConstantsAlone) {
    const auto colors = make<Lamp>();
    colors->put("red", 1, 0, nullptr);
    const auto info = make<TalkativeInfo>(*colors);
    info->superclass = "";
    info->state = InfoState::Enumeration;
    const std::string text = described(*info);
    EXPECT_EQ(text.rfind(R"(<classdef name="Lamp" enumeration="true"><shortdesc>Long</shortdesc>)"
                         R"(<elements type="class"><property name="red" rwaccess="readonly">)",
                         0),
              0U)
        << text;
    EXPECT_EQ(text.find("type=\"constructor\""), std::string::npos);
    EXPECT_EQ(text.find("type=\"instance\""), std::string::npos);
    EXPECT_EQ(text.find("name=\"off\""), std::string::npos); // constants only, no methods
    EXPECT_FALSE(memberOf(*info, "red"));
    const auto red = InterfacePtr<const ServiceInfo>::adopt(info->getStaticServiceInfo("red"));
    ASSERT_TRUE(red);
    EXPECT_EQ(const_cast<ServiceInfo&>(*red).getState(), InfoState::Enumeration);
}

/// A record of a host's own.
class HostService : public ServiceInfo {
public:
    explicit HostService(InfoType kind) : kind_(kind) {}
    bool getName(String& name) const override { return name = "host", true; }
    int getID() const override { return 1; }
    InfoType getType() const override { return kind_; }
    const TypeInfo& getTypeInfo() const override { return *type_; }
    int getParamCount() const override { return count; }
    int count = 0;

private:
    InfoType kind_;
    std::unique_ptr<TypeInfo> type_{
        TypeInfo::parse("undefined", -1, nullptr, nullptr, nullptr, nullptr)};
};

/// A class of a host's own: some names have no record, some records have no description.
class HostClass : public ClassInfo {
public:
    bool getName(String& name) const override { return name = "Host", true; }
    bool enumerateNames(SimpleArray& names, int flags) const override {
        if (!(flags & RequestFlag::ReadWrite) || (flags & RequestFlag::ClassLevel)) return true;
        for (const char* name : {"missing", "first", "broken", "last"})
            names.append(reinterpret_cast<std::intptr_t>(new String(name)));
        return true;
    }
    using ClassInfo::getServiceInfo;
    const ServiceInfo* getServiceInfo(const String& name) const override {
        if (name == "missing") return nullptr;
        auto* service = new HostService(InfoType::Method);
        service->count = name == "broken" ? 1 : 0; // a parameter without a record
        return service;
    }
};

TEST(ClassDescription, SkipsNamesWithoutRecordAndEndsAPassWithABrokenOne) {
    EXPECT_EQ(described(*make<HostClass>()),
              R"(<classdef name="Host" dynamic="true"><elements type="instance">)"
              R"(<method name="host"/></elements></classdef>)");
}

TEST(ServiceDescription, ListsBothHalvesOfWhatCanAlsoBeCalled) {
    const struct {
        InfoType kind;
        const char* text;
    } cases[] = {
        {InfoType::ReadWrite,
         R"(<property name="host"><datatype><type>any</type></datatype></property>)"},
        {InfoType::Method, R"(<method name="host"/>)"},
        {InfoType::CallableReadOnly,
         R"(<method name="host"/><property name="host" rwaccess="readonly"><datatype><type>any</type></datatype></property>)"},
        {InfoType::Unknown, "null"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(described(*make<HostService>(row.kind)), row.text);
    const auto broken = make<HostService>(InfoType::CallableReadWrite);
    broken->count = 1;
    EXPECT_EQ(described(*broken), "null");
}

TEST(ClassInfoCache, LastsUntilPropertiesChange) {
    const auto lamp = make<Lamp>();
    const auto first = infoOf(*lamp);
    EXPECT_EQ(infoOf(*lamp, 0), first);
    EXPECT_NE(infoOf(*lamp, 0x20000), first);
    const auto again = infoOf(*lamp);
    lamp->put("extra", 1, 0, nullptr);
    EXPECT_NE(infoOf(*lamp), again);
    EXPECT_EQ(again->getRefCount(), 1);
    lamp->invalidate();
    EXPECT_EQ(lamp->getClassInfo(library), nullptr);
    SimpleArray names;
    EXPECT_FALSE(again->enumerateNames(names, -1));
}

TEST(ClassInfoCache, FindsNamesInTheLanguageThatAsks) {
    const auto lamp = make<Lamp>();
    String name;
    EXPECT_FALSE(memberOf(*infoOf(*lamp), "POWER"));
    const auto power = memberOf(*infoOf(*lamp, RequestFlag::IgnoreCase), "POWER");
    ASSERT_TRUE(power);
    power->getName(name);
    EXPECT_EQ(narrow(name), "power");
}

TEST(Records, OutliveTheirObject) {
    auto lamp = make<Lamp>();
    lamp->put("extra", 5, 0, nullptr);
    const auto info = infoOf(*lamp);
    const auto power = memberOf(*info, "power");
    const auto extra = memberOf(*info, "extra");
    const auto glow = memberOf(*info, "glow");
    ASSERT_TRUE(power && extra && glow);
    EXPECT_EQ(extra->getTypeInfo().getDataType(), VariantType::Number);
    lamp->put("extra", "text", 0, nullptr);
    EXPECT_EQ(extra->getTypeInfo().getDataType(), VariantType::String);
    lamp.reset();
    String text;
    EXPECT_TRUE(info->getName(text));
    EXPECT_EQ(narrow(text), "Lamp");
    EXPECT_EQ(described(*info), R"(<classdef name="Lamp" dynamic="true"/>)");
    EXPECT_FALSE(memberOf(*info, "power"));
    EXPECT_EQ(extra->getType(), InfoType::ReadWrite);
    EXPECT_EQ(extra->getTypeInfo().getDataType(), anyType);
    EXPECT_EQ(power->getTypeInfo().getDataType(), VariantType::Number);
    const auto by = InterfacePtr<const ParamInfo>::adopt(glow->getParamInfo(0));
    ASSERT_TRUE(by);
    by->getName(text);
    EXPECT_EQ(narrow(text), "by");
}

TEST(Records, ForgetTheirObjectWhoeverHearsOfItsEnd) {
    auto lamp = make<Lamp>();
    InterfacePtr<const ClassInfo> info;
    Ear ear([&](Message&) {
        SimpleArray names;
        EXPECT_FALSE(info->enumerateNames(names, -1));
        return true; // consumed: nobody else hears of it
    });
    lamp->addListener(ear, MessageID::Deleting);
    lamp->addListener(ear, MessageID::Deleted);
    lamp->put("extra", 5, 0, nullptr);
    info = infoOf(*lamp);
    const auto extra = memberOf(*info, "extra");
    lamp.reset();
    EXPECT_EQ(extra->getTypeInfo().getDataType(), anyType);
}

TEST(Records, GiveEverythingBackWhenMemoryRunsOut) {
    const auto lamp = make<Lamp>();
    lamp->put("extra", 5, 0, nullptr);
    infoOf(*lamp); // the object's first listener
    const auto dropCache = [](LiveObject* object) { object->propertyDefsChanged(); };
    dropCache(lamp.get());
    forEachFailure([&] {
        const std::unique_ptr<LiveObject, decltype(dropCache)> cache(lamp.get(), dropCache);
        const auto info = infoOf(*lamp);
        described(*info);
        const auto ofTable = make<PropertyManagerClassInfo>(lamp->manager, 0);
        described(*ofTable);
    });
}

} // namespace
