#pragma once

#include <duktape.h>

#include <cstddef>

namespace krhost {

class ScriptEngine;

/// The memory of one script engine, counted, so that a script can see it return.
class ScriptHeap {
public:
    explicit ScriptHeap(ScriptEngine& engine) : engine_(engine) {}
    ScriptHeap(const ScriptHeap&) = delete;
    ScriptHeap& operator=(const ScriptHeap&) = delete;

    /// A new engine on this memory; null when there is none left.
    duk_context* createContext();

    ScriptEngine& engine() const { return engine_; }
    std::size_t blocks() const { return blocks_; }
    std::size_t bytes() const { return bytes_; }

private:
    static void* allocate(void* heap, duk_size_t size);
    static void* reallocate(void* heap, void* block, duk_size_t size);
    static void release(void* heap, void* block);
    static void fatal(void* heap, const char* message);

    ScriptEngine& engine_;
    std::size_t blocks_ = 0;
    std::size_t bytes_ = 0;
};

} // namespace krhost
