#include <krcore/messages.h>

#include <benchmark/benchmark.h>

#ifdef KR_PEER_QT
#include "QtPeer.h"
#endif
#ifdef KR_PEER_BOOST
#include <boost/signals2.hpp>
#endif

#include <memory>
#include <string>
#include <vector>

// One message to a number of listeners that do next to nothing and let it pass.

using namespace KrCore;

namespace {

constexpr int ping = fourCharCode("ping");

class Counter : public Listener {
public:
    bool notify(Message& message) override {
        sum += message.getID();
        return false;
    }
    long long sum = 0;
};

void deliver(benchmark::State& state, int count) {
    Broadcaster broadcaster;
    std::vector<Counter> counters(static_cast<std::size_t>(count));
    for (Counter& counter : counters)
        broadcaster.addListener(counter, ping);
    Message message(ping);
    for (auto _ : state) {
        benchmark::DoNotOptimize(&broadcaster);
        benchmark::DoNotOptimize(broadcaster.broadcast(message));
    }
}

#ifdef KR_PEER_QT

void emitQt(benchmark::State& state, int count) {
    QtPeer sender;
    std::vector<std::unique_ptr<QObject>> receivers;
    long long sum = 0;
    for (int i = 0; i < count; ++i) {
        receivers.push_back(std::make_unique<QObject>());
        QObject::connect(&sender, &QtPeer::changed, receivers.back().get(),
                         [&sum](int value) { sum += value; });
    }
    for (auto _ : state) {
        emit sender.changed(ping);
        benchmark::DoNotOptimize(sum);
    }
}

#endif

#ifdef KR_PEER_BOOST

template <class Signal>
void signalBoost(benchmark::State& state, int count) {
    Signal signal;
    long long sum = 0;
    for (int i = 0; i < count; ++i)
        signal.connect([&sum](int value) { sum += value; });
    for (auto _ : state) {
        signal(ping);
        benchmark::DoNotOptimize(sum);
    }
}

using LockingSignal = boost::signals2::signal<void(int)>;
using PlainSignal = boost::signals2::signal_type<
    void(int), boost::signals2::keywords::mutex_type<boost::signals2::dummy_mutex>>::type;

#endif

void registerAll() {
    for (int count : {0, 1, 10, 100}) {
        const std::string area = "broadcaster/" + std::to_string(count) + " listeners/";
        const auto add = [&](const char* who, void (*run)(benchmark::State&, int)) {
            benchmark::RegisterBenchmark((area + who).c_str(), run, count);
        };
        add("krcore", deliver);
#ifdef KR_PEER_QT
        add("qt", emitQt);
#endif
#ifdef KR_PEER_BOOST
        add("boost", signalBoost<LockingSignal>);
        add("boost-without-mutex", signalBoost<PlainSignal>);
#endif
    }
}

const bool isRegistered = (registerAll(), true);

} // namespace
