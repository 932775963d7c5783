// TypeScript declarations of a class that makes it hard: names that are none, texts that end
// comments, parameters in any order. What is expected stands in oddities.d.ts, which the compiler
// reads too.

#include "TypeScriptWriter.h"
#include "hosts/HostClassInfo.h"

#include <krcore/live/LiveCollection.h>
#include <krcore/live/LivePropertyInfo.h>
#include <krcore/live/LivePropertyManager.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

using namespace KrCore;
using namespace krhost;

namespace {

constexpr int readOnly = int(InfoType::ReadOnly);
constexpr int readWrite = int(InfoType::ReadWrite);
constexpr int method = int(InfoType::Method);

constexpr LivePropertyInfo oddTable[] = {
    {"", PropertyID::Constructor, method, "Odd,first:number;;;1,second:string"},
    {"two words", 1, readOnly, "number\tEnds */ here\tand \"there\""},
    {"quote\"\\\n", 2, readWrite, "string"},
    {"gr\xF6\xDF"
     "e",
     3, readWrite, "number;nonsense;1e999;NaN"},
    {"delete", 4, method, "undefined,this:int,this:bool,class:any,2nd:any,a-b:uint,:any"},
    {"constructor", 5, readWrite, "number"},
    {"==", PropertyID::FirstOperator + 15, method, "boolean,other:Odd"},
    {"state", 6, int(InfoType::CallableReadOnly), "Odd/number;;;;array,...more:Odd"},
    {"unknown", 7, readWrite, "Widget"},
    {"nested", 8, method, "Array;;;;array,...early:number,when:Date,f:Function;;;null,o:object"},
    {"rows", 9, method, nullptr},
    {"length", 10, readWrite, "number"},
    {nullptr, 0, 0, nullptr}};

constexpr ClassTexts oddTexts = {.description = "Odd /* */ class",
                                 .details = "Line one\nline two",
                                 .sample = "a(); /* b */\n\nc();"};

class Odd : public LiveCollection {
public:
    explicit Odd(LivePropertyManager& manager) : LiveCollection("Odd", 10, false) {
        propertyManager = &manager;
    }
};

std::string readFile(const char* path) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}

TEST(Declarations, AreRightForOddNamesAndTexts) {
    LivePropertyManager manager(oddTable);
    const auto odd = InterfacePtr<Odd>::adopt(new Odd(manager));
    const unsigned short lineSeparator[] = {'/', 0x2028, 'a', 0};
    const auto reserved = InterfacePtr<LiveObject>::adopt(new LiveObject("delete", false));
    const auto broken =
        InterfacePtr<LiveObject>::adopt(new LiveObject(String(lineSeparator), false));
    TypeScriptWriter writer([&](const String& name) {
        const LiveObject* object = nullptr;
        if (name == "Odd") object = odd.get();
        if (name == "delete") object = reserved.get();
        if (name == "line") object = broken.get();
        return InterfacePtr<const ClassInfo>::adopt(
            object ? HostClassInfo::describe(*object, RequestFlag::Library, oddTexts) : nullptr);
    });
    for (const char* name : {"Odd", "delete", "line", "Missing"})
        writer.addClass(name);
    EXPECT_EQ(writer.write(), readFile(KRCORE_EXAMPLES_TESTS "/oddities.d.ts"));
}

} // namespace
