#pragma once

#include <krcore/foundation/Root.h>

#include <atomic>
#include <cstdint>

namespace KrCore {

namespace Platform {
struct ThreadGate;
}

/// A thread whose body a subclass supplies as `run`. To be used after `InitTerm::setMT`.
///
/// The object must outlive its body, and the destructor does not wait for it: wait until `isActive`
/// is false or for an `Event` of your own. A thread that was never started ends with its object.
class KR_API Thread : public Root {
public:
    /// Makes the thread, suspended, and restarts the calling thread's lap timer.
    Thread();
    ~Thread() override;
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;

    virtual void run() = 0;

    /// Lets the thread run; ignored when it runs already or when `getError` is not 0.
    void start();

    /// 0, or `ErrorCode::CannotExecute` when the system refused to make the thread.
    int getError() const { return error_; }
    /// The identifier that `getCurrentID` gives inside `run`; 0 when the thread could not be made.
    unsigned int getID() const { return id_; }
    /// True from construction until the body has returned; stays true for a thread that could not
    /// be made.
    bool isActive() const { return active_.load(std::memory_order_acquire); }

    /// The calling thread's identifier; 0 in the thread that initialised the library.
    static unsigned int getCurrentID();
    static void sleep(unsigned int milliseconds);

    /// Lap timer: microseconds since the previous call in this thread, at first since the start of
    /// the library. Making a `Thread` restarts the timer of the thread that makes it.
    static std::int64_t getHiResTimer();

private:
    static unsigned int go(void* thread);

    Platform::ThreadGate* gate_ = nullptr;
    unsigned int id_ = 0;
    int error_ = 0;
    std::atomic<bool> active_ = true;
};

} // namespace KrCore
