#pragma once

#include "ErrorBridge.h"
#include "Holdings.h"
#include "KeptValue.h"
#include "LibraryCalls.h"
#include "ObjectBridge.h"
#include "RingCollector.h"
#include "ScriptHeap.h"
#include "ValueBridge.h"

#include <duktape.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace krhost {

class ScriptObject;

/// One JavaScript engine with the library's live objects in it. Everything happens on one thread.
class ScriptEngine {
public:
    struct Settings {
        bool trace = false;  ///< Print every library call.
        bool strict = false; ///< Reading a name that a live object does not know is an error.
    };

    /// Throws `std::bad_alloc` when the engine cannot be made.
    explicit ScriptEngine(const Settings& settings);
    ~ScriptEngine();
    ScriptEngine(const ScriptEngine&) = delete;
    ScriptEngine& operator=(const ScriptEngine&) = delete;

    static ScriptEngine& of(duk_context* context);

    /// What becomes of the value of the last statement.
    enum class Echo { None, Print };

    /// Runs UTF-8 source text; `file` is what errors call it. An error nobody caught is printed to
    /// the standard error with file and line, and false is returned.
    bool run(const std::string& source, const std::string& file, Echo echo = Echo::None);

    /// Defines the global array `arguments`; the words are UTF-8.
    void setArguments(const std::vector<std::string>& words);

    duk_context* context() const { return context_; }
    bool isStrict() const { return settings_.strict; }
    const ScriptHeap& heap() const { return heap_; }
    const LibraryCalls& calls() const { return calls_; }
    ErrorBridge& errors() { return errors_; }
    ValueBridge& values() { return values_; }
    ObjectBridge& objects() { return objects_; }
    RingCollector& rings() { return rings_; }
    KeptValues& keptValues() { return keptValues_; }
    /// The script objects that the host holds, by their address in the engine.
    std::unordered_map<void*, ScriptObject*>& scriptObjects() { return scriptObjects_; }

    /// Takes over a holding whose script object was collected.
    void drop(Holding& holding);
    /// Deletes what was dropped; the host's destructors run here.
    void releaseDropped();

private:
    void install();
    void printUncaught(const std::string& file);

    Settings settings_;
    ScriptHeap heap_;
    duk_context* context_;
    LibraryCalls calls_;
    ErrorBridge errors_;
    ValueBridge values_;
    ObjectBridge objects_;
    RingCollector rings_;
    KeptValues keptValues_;
    std::unordered_map<void*, ScriptObject*> scriptObjects_;
    Holding* dropped_ = nullptr;
};

} // namespace krhost
