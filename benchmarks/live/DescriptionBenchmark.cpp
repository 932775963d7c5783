#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live.h>
#include <krcore/xml/XML.h>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

// The description of a class as a documentation viewer asks for it: every other service is a
// method, all have descriptions, many have ranges and defaults. No peer describes its classes in
// such a way; what counts is that a user does not notice the wait.

using namespace KrCore;

namespace {

constexpr double longestWait = 1e4; // ns for each service

constexpr const char* descriptors[] = {
    "number;0;1000;100\tThe width\tThe width of the shape in points, without its border.",
    "bool\tMoves the shape\tMoves the shape by an offset and draws it anew.,"
    "dx:number;-1000;1000;0\tTo the right,dy:number;-1000;1000;0\tDownwards,"
    "animated:bool;;;false\tSlowly",
    "Shape;;;;array\tThe shapes within this one",
    "undefined\tNames a shape,name:string\tThe new name,index:uint;0;;0\tWhich of the shapes",
};

/// A class's table with names and descriptors that live as long as it does.
class Table {
public:
    explicit Table(int serviceCount) {
        names_.reserve(static_cast<std::size_t>(serviceCount)); // the rows point into it
        rows_.push_back({"", PropertyID::Constructor, int(InfoType::Method),
                         "Shape\tMakes a shape,name:string,parent:Shape"});
        for (int i = 0; i < serviceCount; ++i) {
            const bool isMethod = i % 2 != 0;
            names_.push_back((isMethod ? "doThing" : "property") + std::to_string(i));
            rows_.push_back({names_.back().c_str(), i + 1,
                             int(isMethod ? InfoType::Method : InfoType::ReadWrite),
                             descriptors[i % 4]});
        }
        rows_.push_back({nullptr, 0, 0, nullptr});
    }
    const LivePropertyInfo* rows() const { return rows_.data(); }

private:
    std::vector<std::string> names_;
    std::vector<LivePropertyInfo> rows_;
};

class Shape : public LiveObject {
public:
    explicit Shape(LivePropertyManager& manager) : LiveObject("Shape", true) {
        propertyManager = &manager;
    }
};

InterfacePtr<XML> describe(const LiveObject& object) {
    object.propertyDefsChanged(); // or the record of the last time would be taken
    const auto info =
        InterfacePtr<const ClassInfo>::adopt(object.getClassInfo(RequestFlag::Library));
    return InterfacePtr<XML>::adopt(info->toXML());
}

template <class Use>
void run(benchmark::State& state, int serviceCount, Use use) {
    const Table table(serviceCount);
    LivePropertyManager manager(table.rows());
    const auto shape = InterfacePtr<LiveObject>::adopt(new Shape(manager));
    for (auto _ : state)
        benchmark::DoNotOptimize(use(*describe(*shape)));
    state.counters["target"] = longestWait * serviceCount;
}

void describeClass(benchmark::State& state, int serviceCount) {
    run(state, serviceCount, [](const XML& tree) { return tree.length(); });
}

void describeClassAsText(benchmark::State& state, int serviceCount) {
    run(state, serviceCount, [](const XML& tree) { return tree.toXMLString(2).length(); });
}

const bool isRegistered = [] {
    for (int count : {200, 2000}) {
        const std::string name = "live/describe class of " + std::to_string(count);
        benchmark::RegisterBenchmark((name + "/krcore").c_str(), describeClass, count);
        benchmark::RegisterBenchmark((name + " as text/krcore").c_str(), describeClassAsText,
                                     count);
    }
    return true;
}();

} // namespace
