// Look-ups in the hash table against a modern open-addressed map and against Qt's. Every case walks
// through all keys in random order; a peer without look-up ignoring case folds the key first.

#include <krcore/containers/HashTable.h>
#include <krcore/text/String.h>

#include <benchmark/benchmark.h>

#ifdef KR_PEER_ABSL
#include <absl/container/flat_hash_map.h>
#endif
#ifdef KR_PEER_QT
#include <QHash>
#include <QString>
#endif

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

enum class Case { Exact, Ignored };

std::vector<std::u16string> makeKeys(int count, const std::u16string& prefix) {
    std::vector<std::u16string> keys;
    for (int index = 0; index < count; ++index) {
        std::u16string key = prefix;
        for (int rest = index * 7 + 1; rest > 0; rest /= 26) {
            key += static_cast<char16_t>(u'a' + rest % 26);
        }
        keys.push_back(key);
    }
    std::shuffle(keys.begin(), keys.end(), std::mt19937(1));
    return keys;
}

std::u16string upper(std::u16string key) {
    for (char16_t& unit : key) {
        if (unit >= u'a' && unit <= u'z') unit = static_cast<char16_t>(unit - 32);
    }
    return key;
}

struct KrTable {
    static constexpr const char* name = "krcore";
    using Key = KrCore::String;
    static Key makeKey(const std::u16string& key) { return Key(key.c_str()); }
    void add(const std::u16string& key, long long value) { table.set(makeKey(key), value); }
    long long find(const Key& key) const { return table.find(key); }
    long long findIgnoringCase(const Key& key) const { return table.find(key, true); }
    KrCore::HashTable table;
};

#ifdef KR_PEER_ABSL
struct AbslTable {
    static constexpr const char* name = "absl";
    using Key = std::u16string;
    static Key makeKey(const std::u16string& key) { return key; }
    void add(const std::u16string& key, long long value) { table[key] = value; }
    long long find(const Key& key) const { return table.find(key)->second; }
    long long findIgnoringCase(const Key& key) const { return find(upper(key)); }
    absl::flat_hash_map<Key, long long> table;
};
#endif

#ifdef KR_PEER_QT
struct QtTable {
    static constexpr const char* name = "Qt";
    using Key = QString;
    static Key makeKey(const std::u16string& key) { return QString::fromStdU16String(key); }
    void add(const std::u16string& key, long long value) { table[makeKey(key)] = value; }
    long long find(const Key& key) const { return table.value(key); }
    long long findIgnoringCase(const Key& key) const { return find(key.toUpper()); }
    QHash<Key, long long> table;
};
#endif

template <class Table, Case mode>
void lookUp(benchmark::State& state, int count, const std::u16string& prefix) {
    const std::vector<std::u16string> names = makeKeys(count, prefix);
    Table table;
    std::vector<typename Table::Key> keys;
    for (const std::u16string& name : names) {
        table.add(mode == Case::Exact ? name : upper(name), 1);
        keys.push_back(Table::makeKey(name));
    }
    for (auto _ : state) {
        long long sum = 0;
        for (const auto& key : keys) {
            sum += mode == Case::Exact ? table.find(key) : table.findIgnoringCase(key);
        }
        benchmark::DoNotOptimize(sum);
        if (sum != count) state.SkipWithError("a key was not found");
    }
    state.SetItemsProcessed(state.iterations() * count);
}

template <class Table>
void registerCases() {
    const struct {
        std::string name;
        int count;
        std::u16string prefix;
    } rows[] = {{"20 keys", 20, u""},
                {"1000 keys", 1000, u""},
                {"20000 keys", 20000, u""},
                {"500 keys with a common prefix", 500, u"property"}};
    for (const auto& row : rows) {
        benchmark::RegisterBenchmark(("hashtable/hit, " + row.name + "/" + Table::name).c_str(),
                                     [row](benchmark::State& state) {
                                         lookUp<Table, Case::Exact>(state, row.count, row.prefix);
                                     });
        benchmark::RegisterBenchmark(
            ("hashtable/hit ignoring case, " + row.name + "/" + Table::name).c_str(),
            [row](benchmark::State& state) {
                lookUp<Table, Case::Ignored>(state, row.count, row.prefix);
            });
    }
}

[[maybe_unused]] const bool registered = [] {
    registerCases<KrTable>();
#ifdef KR_PEER_ABSL
    registerCases<AbslTable>();
#endif
#ifdef KR_PEER_QT
    registerCases<QtTable>();
#endif
    return true;
}();

} // namespace
