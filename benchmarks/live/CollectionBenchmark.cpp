#include <krcore/containers/Array.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live.h>
#include <krcore/messages.h>
#include <krcore/values/Variant.h>

#include <benchmark/benchmark.h>

#ifdef KR_PEER_DUKTAPE
#include <duktape.h>
#endif
#ifdef KR_PEER_QT
#include <QtCore/QObject>
#include <QtCore/QVariant>
#endif

#include <array>
#include <string>

// Elements by index: numbers that the host keeps, reached one after the other through a collection,
// and those that an array keeps itself. Qt has one dynamic property, where it finds it soonest.

using namespace KrCore;

namespace {

constexpr unsigned elementCount = 100;

using Numbers = std::array<double, elementCount>;

constexpr unsigned next(unsigned index) { return index + 1 < elementCount ? index + 1 : 0; }

class Elements : public LiveComponent {
public:
    bool isIndexable() const override { return true; }
    int getByIndex(const LiveObject&, unsigned index, Variant& result, Error*) const override {
        result = numbers_[index];
        return 0;
    }
    int putByIndex(LiveObject&, unsigned index, const Variant& value, Error*) override {
        numbers_[index] = value.getDouble();
        return 0;
    }

private:
    ~Elements() override = default;
    Numbers numbers_{};
};

class Keeper : public Listener {
public:
    bool notify(Message& message) override {
        auto& request = static_cast<LiveMessage&>(message);
        double& number = numbers_[static_cast<unsigned>(request.getPropertyID())];
        if (message.getID() == MessageID::GetByIndex) {
            *request.getData() = number;
        } else {
            number = request.getData()->getDouble();
        }
        return true;
    }

private:
    Numbers numbers_{};
};

using Collection = InterfacePtr<LiveCollection>;

void read(benchmark::State& state, const LiveCollection* collection) {
    Variant result;
    unsigned index = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(collection);
        collection->getByIndex(index, result, nullptr);
        benchmark::DoNotOptimize(result.getDouble());
        index = next(index);
    }
}

void write(benchmark::State& state, LiveCollection* collection) {
    unsigned index = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(collection);
        benchmark::DoNotOptimize(collection->putByIndex(index, 2.5, nullptr));
        index = next(index);
    }
}

template <class Access>
void throughComponent(benchmark::State& state, Access access) {
    const auto collection = Collection::adopt(new LiveCollection("Numbers", 0, false));
    const auto component = InterfacePtr<Elements>::adopt(new Elements);
    collection->addComponent(*component);
    access(state, collection.get());
}

template <class Access>
void throughListener(benchmark::State& state, Access access) {
    Keeper keeper;
    const auto collection = Collection::adopt(new LiveCollection("Numbers", 0, false));
    collection->addListener(keeper, MessageID::GetByIndex);
    collection->addListener(keeper, MessageID::PutByIndex);
    access(state, collection.get());
}

template <class Access>
void ofArray(benchmark::State& state, Access access) {
    const auto array = Collection::adopt(new LiveArray("Numbers", 0, false));
    for (unsigned i = 0; i < elementCount; ++i)
        array->putByIndex(i, 1.0, nullptr);
    access(state, array.get());
}

#ifdef KR_PEER_QT

void qtRead(benchmark::State& state) {
    QObject object;
    object.setProperty("element", 1.0);
    for (auto _ : state)
        benchmark::DoNotOptimize(object.property("element").toDouble());
}

void qtWrite(benchmark::State& state) {
    QObject object;
    for (auto _ : state)
        benchmark::DoNotOptimize(object.setProperty("element", 2.5));
}

#endif

#ifdef KR_PEER_DUKTAPE

/// An array on the stack of a script heap, each of whose elements has a getter and a setter.
class Duktape {
public:
    Duktape() : context_(duk_create_heap_default()) {
        duk_push_array(context_);
        for (unsigned i = 0; i < elementCount; ++i) {
            duk_push_uint(context_, i);
            pushAccessor(get, 0, i);
            pushAccessor(set, 1, i);
            duk_def_prop(context_, -4, DUK_DEFPROP_HAVE_GETTER | DUK_DEFPROP_HAVE_SETTER);
        }
    }
    Duktape(const Duktape&) = delete;
    Duktape& operator=(const Duktape&) = delete;
    ~Duktape() { duk_destroy_heap(context_); }
    duk_context* get() const { return context_; }

private:
    void pushAccessor(duk_c_function accessor, int argumentCount, unsigned index) {
        duk_push_c_function(context_, accessor, argumentCount);
        duk_set_magic(context_, -1, static_cast<duk_int_t>(index));
    }
    static double& current(duk_context* context) {
        return numbers_[static_cast<unsigned>(duk_get_current_magic(context))];
    }
    static duk_ret_t get(duk_context* context) {
        duk_push_number(context, current(context));
        return 1;
    }
    static duk_ret_t set(duk_context* context) {
        current(context) = duk_get_number(context, 0);
        return 0;
    }

    static inline Numbers numbers_{};
    duk_context* context_;
};

void duktapeRead(benchmark::State& state) {
    const Duktape script;
    unsigned index = 0;
    for (auto _ : state) {
        duk_get_prop_index(script.get(), 0, index);
        benchmark::DoNotOptimize(duk_get_number(script.get(), -1));
        duk_pop(script.get());
        index = next(index);
    }
}

void duktapeWrite(benchmark::State& state) {
    const Duktape script;
    unsigned index = 0;
    for (auto _ : state) {
        duk_push_number(script.get(), 2.5);
        benchmark::DoNotOptimize(duk_put_prop_index(script.get(), 0, index));
        index = next(index);
    }
}

#endif

template <class Run>
void add(const std::string& name, Run run) {
    benchmark::RegisterBenchmark(name.c_str(), run);
}

/// All ways are measured against the same peers.
template <class Way>
void addWay(const char* owner, Way way) {
    const std::string reading = std::string("live/read element ") + owner + "/";
    const std::string writing = std::string("live/write element ") + owner + "/";
    add(reading + "krcore", [way](benchmark::State& state) { way(state, read); });
    add(writing + "krcore", [way](benchmark::State& state) { way(state, write); });
#ifdef KR_PEER_QT
    add(reading + "qt", qtRead);
    add(writing + "qt", qtWrite);
#endif
#ifdef KR_PEER_DUKTAPE
    add(reading + "duktape", duktapeRead);
    add(writing + "duktape", duktapeWrite);
#endif
}

const bool isRegistered = [] {
    addWay("through component", [](auto& state, auto access) { throughComponent(state, access); });
    addWay("through listener", [](auto& state, auto access) { throughListener(state, access); });
    addWay("of array", [](auto& state, auto access) { ofArray(state, access); });
    return true;
}();

} // namespace
