#include <krcore/containers/Array.h>
#include <krcore/containers/SimpleArray.h>
#include <krcore/foundation/InitTerm.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live.h>
#include <krcore/values/Variant.h>

#include <benchmark/benchmark.h>

#ifdef KR_PEER_MUJS
extern "C" {
#include <mujs.h>
}
#endif
#ifdef KR_PEER_QT
#include "QtPeer.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtCore/QVariant>
#endif

#include <cstdio>
#include <utility>

// A host object with twenty properties, as scripts use it. The name asked for stands in the middle
// of the table.

using namespace KrCore;

namespace {

constexpr int rowCount = 20;
constexpr int askedRow = 12;
constexpr const char* names[rowCount + 1] = {
    "left",  "top",   "right",   "bottom",  "visible", "enabled", "opacity",
    "color", "style", "caption", "tooltip", "parent",  "width",   "height",
    "depth", "grow",  "shrink",  "layout",  "update",  "close",   nullptr};
constexpr int methodRow = 15; // "grow"

class Host : public LiveObject {
public:
    Host() : LiveObject("Host", true) { propertyManager = manager(); }

    using LiveObject::call;
    using LiveObject::get;
    using LiveObject::put;
    int get(int id, Variant& result, Error* err) const override {
        if (id != askedRow) return LiveObject::get(id, result, err);
        result = width_;
        return 0;
    }
    int put(int id, const Variant& value, Error* err) override {
        if (id != askedRow) return LiveObject::put(id, value, err);
        width_ = value.getDouble();
        return 0;
    }
    int call(int id, const Array& args, Variant& result, Error* err) override {
        if (id != methodRow) return LiveObject::call(id, args, result, err);
        result = width_ += args[0].getDouble();
        return 0;
    }

private:
    static LivePropertyManager* manager() {
        static LivePropertyManager* made = nullptr;
        static LivePropertyInfo rows[rowCount + 1];
        if (made) return made;
        for (int i = 0; i <= rowCount; ++i)
            rows[i] = {names[i], i,
                       static_cast<int>(i < methodRow ? InfoType::ReadWrite : InfoType::Method),
                       nullptr};
        made = new LivePropertyManager(rows);
        InitTerm::atExit([] { delete std::exchange(made, nullptr); });
        return made;
    }

    double width_ = 1;
};

InterfacePtr<LiveObject> makeDynamic() {
    auto object = InterfacePtr<LiveObject>::adopt(new LiveObject("Dynamic", true));
    for (int i = 0; i < rowCount; ++i)
        object->put(names[i], i, 0, nullptr);
    return object;
}

void getByName(benchmark::State& state) {
    const auto host = InterfacePtr<Host>::adopt(new Host);
    const String name = names[askedRow];
    Variant result;
    for (auto _ : state) {
        host->get(name, result, nullptr);
        benchmark::DoNotOptimize(result.getDouble());
    }
}

void putByName(benchmark::State& state) {
    const auto host = InterfacePtr<Host>::adopt(new Host);
    const String name = names[askedRow];
    for (auto _ : state)
        benchmark::DoNotOptimize(host->put(name, 2.5, -1, nullptr));
}

void getByID(benchmark::State& state) {
    const auto host = InterfacePtr<LiveObject>::adopt(new Host);
    LiveObject* object = host.get();
    Variant result;
    for (auto _ : state) {
        benchmark::DoNotOptimize(object);
        object->get(askedRow, result, nullptr);
        benchmark::DoNotOptimize(result.getDouble());
    }
}

void putByID(benchmark::State& state) {
    const auto host = InterfacePtr<LiveObject>::adopt(new Host);
    LiveObject* object = host.get();
    for (auto _ : state) {
        benchmark::DoNotOptimize(object);
        benchmark::DoNotOptimize(object->put(askedRow, 2.5, nullptr));
    }
}

void getDynamicByName(benchmark::State& state) {
    const auto object = makeDynamic();
    const String name = names[askedRow];
    Variant result;
    for (auto _ : state) {
        object->get(name, result, nullptr);
        benchmark::DoNotOptimize(result.getDouble());
    }
}

void putDynamicByName(benchmark::State& state) {
    const auto object = makeDynamic();
    const String name = names[askedRow];
    for (auto _ : state)
        benchmark::DoNotOptimize(object->put(name, 2.5, 0, nullptr));
}

void callByName(benchmark::State& state) {
    const auto host = InterfacePtr<Host>::adopt(new Host);
    const String name = names[methodRow];
    Variant result;
    for (auto _ : state) {
        Array args;
        args += 1.0;
        benchmark::DoNotOptimize(host->call(name, args, result, nullptr));
    }
}

/// With the arguments at hand, as the peer has them; above they are made for each call, as there.
void callByID(benchmark::State& state) {
    const auto host = InterfacePtr<LiveObject>::adopt(new Host);
    LiveObject* object = host.get();
    Array args;
    args += 1.0;
    Variant result;
    for (auto _ : state) {
        benchmark::DoNotOptimize(object);
        benchmark::DoNotOptimize(object->call(methodRow, args, result, nullptr));
    }
}

BENCHMARK(getByName)->Name("live/get by name/krcore");
BENCHMARK(putByName)->Name("live/put by name/krcore");
BENCHMARK(getByID)->Name("live/get by ID/krcore");
BENCHMARK(putByID)->Name("live/put by ID/krcore");
BENCHMARK(getDynamicByName)->Name("live/get dynamic by name/krcore");
BENCHMARK(putDynamicByName)->Name("live/put dynamic by name/krcore");
BENCHMARK(callByName)->Name("live/call by name/krcore");
BENCHMARK(callByID)->Name("live/call by ID/krcore");

/// Memory has no peer; it is printed before the times.
bool printSizes() {
    InitTerm::init();
    {
        int blocks = 0, bytesBefore = 0, bytes = 0;
        const String className = "Thing";
        Heap::getMemoryStatistics(blocks, bytesBefore);
        const auto object = InterfacePtr<LiveObject>::adopt(new LiveObject(className, true));
        Heap::getMemoryStatistics(blocks, bytes);
        std::printf("bytes: Variant %zu, String %zu, SimpleArray %zu, idle LiveObject %d\n",
                    sizeof(Variant), sizeof(String), sizeof(SimpleArray), bytes - bytesBefore);
    }
    InitTerm::exit();
    return true;
}
const bool sizesArePrinted = printSizes();

#ifdef KR_PEER_MUJS

/// An object on the stack of a script state: with accessors for the twenty names, or plain.
class MuJS {
public:
    explicit MuJS(bool hasAccessors) : state_(js_newstate(nullptr, nullptr, 0)) {
        js_newobject(state_);
        for (int i = 0; i < rowCount; ++i) {
            if (hasAccessors && i < methodRow) {
                js_newcfunction(state_, read, "get", 0);
                js_newcfunction(state_, write, "set", 1);
                js_defaccessor(state_, -3, names[i], 0);
            } else if (hasAccessors) {
                js_newcfunction(state_, grow, names[i], 1);
                js_setproperty(state_, -2, names[i]);
            } else {
                js_pushnumber(state_, i);
                js_setproperty(state_, -2, names[i]);
            }
        }
    }
    ~MuJS() { js_freestate(state_); }
    js_State* get() const { return state_; }

private:
    static inline double width_ = 1;
    static void read(js_State* state) { js_pushnumber(state, width_); }
    static void write(js_State* state) {
        width_ = js_tonumber(state, 1);
        js_pushundefined(state);
    }
    static void grow(js_State* state) { js_pushnumber(state, width_ += js_tonumber(state, 1)); }

    js_State* state_;
};

template <bool hasAccessors>
void mujsGet(benchmark::State& state) {
    const MuJS script(hasAccessors);
    for (auto _ : state) {
        js_getproperty(script.get(), -1, names[askedRow]);
        benchmark::DoNotOptimize(js_tonumber(script.get(), -1));
        js_pop(script.get(), 1);
    }
}

template <bool hasAccessors>
void mujsPut(benchmark::State& state) {
    const MuJS script(hasAccessors);
    for (auto _ : state) {
        js_pushnumber(script.get(), 2.5);
        js_setproperty(script.get(), -2, names[askedRow]);
    }
}

void mujsCall(benchmark::State& state) {
    const MuJS script(true);
    for (auto _ : state) {
        js_getproperty(script.get(), -1, names[methodRow]);
        js_copy(script.get(), -2);
        js_pushnumber(script.get(), 1);
        js_call(script.get(), 1);
        benchmark::DoNotOptimize(js_tonumber(script.get(), -1));
        js_pop(script.get(), 1);
    }
}

BENCHMARK(mujsGet<true>)->Name("live/get by name/mujs");
BENCHMARK(mujsPut<true>)->Name("live/put by name/mujs");
BENCHMARK(mujsGet<false>)->Name("live/get dynamic by name/mujs");
BENCHMARK(mujsPut<false>)->Name("live/put dynamic by name/mujs");
BENCHMARK(mujsCall)->Name("live/call by name/mujs");

#endif

#ifdef KR_PEER_QT

void qtGet(benchmark::State& state) {
    QtPeer peer;
    const QMetaObject* meta = peer.metaObject();
    const QMetaProperty property = meta->property(meta->indexOfProperty("width"));
    for (auto _ : state)
        benchmark::DoNotOptimize(property.read(&peer).toDouble());
}

void qtPut(benchmark::State& state) {
    QtPeer peer;
    const QMetaObject* meta = peer.metaObject();
    const QMetaProperty property = meta->property(meta->indexOfProperty("width"));
    for (auto _ : state)
        benchmark::DoNotOptimize(property.write(&peer, 2.5));
}

void qtCall(benchmark::State& state) {
    QtPeer peer;
    const QMetaObject* meta = peer.metaObject();
    const QMetaMethod method = meta->method(meta->indexOfMethod("grow(double)"));
    double result = 0;
    for (auto _ : state) {
        method.invoke(&peer, Qt::DirectConnection, Q_RETURN_ARG(double, result),
                      Q_ARG(double, 1.0));
        benchmark::DoNotOptimize(result);
    }
}

BENCHMARK(qtGet)->Name("live/get by ID/qt");
BENCHMARK(qtPut)->Name("live/put by ID/qt");
BENCHMARK(qtCall)->Name("live/call by ID/qt");

#endif

} // namespace
