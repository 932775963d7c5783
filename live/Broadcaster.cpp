#include <krcore/messages/Broadcaster.h>

#include "foundation/LockSlots.h"
#include "live/BroadcasterData.h"

#include <krcore/foundation/LockRef.h>
#include <krcore/messages/Message.h>

namespace KrCore {

namespace {

/// The time during which listeners run: the lock is held, and the data stays although the
/// broadcaster may die.
class Delivery {
public:
    explicit Delivery(BroadcasterData& data) : data_(data), lock_(data.getLock()) {
        if (lock_) lock_->acquire();
        data_.beginDelivery();
    }
    ~Delivery() {
        const bool isLast = data_.endDelivery();
        if (lock_) lock_->release();
        if (isLast) delete &data_;
    }
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;

private:
    BroadcasterData& data_;
    Lock* lock_;
};

} // namespace

Broadcaster::~Broadcaster() {
    BroadcasterData* data = data_.load();
    if (!data) return;
    if (data->wantsDeletion()) {
        broadcast(MessageID::Deleting);
        broadcast(MessageID::Deleted);
    }
    if (data->abandon()) delete data;
}

BroadcasterData& Broadcaster::requireData() {
    if (BroadcasterData* data = data_.load(std::memory_order_acquire)) return *data;
    LibraryLock guard(LockSlot::Broadcasters);
    if (!data_.load(std::memory_order_relaxed))
        data_.store(new BroadcasterData, std::memory_order_release);
    return *data_.load(std::memory_order_relaxed);
}

void Broadcaster::addListener(Listener& listener, int id) {
    BroadcasterData& data = requireData();
    LockRef guard(data.getLock());
    data.add(listener, id);
}

void Broadcaster::removeListener(Listener& listener, int id) {
    BroadcasterData* data = data_.load(std::memory_order_acquire);
    if (!data) return;
    LockRef guard(data->getLock());
    data->remove(listener, id);
}

bool Broadcaster::broadcast(Message& message) const {
    BroadcasterData* data = data_.load(std::memory_order_acquire);
    if (!data) return false;

    struct SenderRestorer {
        Message& message;
        const Broadcaster* previous;
        ~SenderRestorer() { message.sender_ = previous; }
    };
    Delivery delivery(*data);
    SenderRestorer restorer{message, message.sender_};
    message.sender_ = this;
    return data->deliver(message);
}

bool Broadcaster::broadcast(int id) const {
    if (!data_.load(std::memory_order_acquire)) return false;
    Message message(id);
    return broadcast(message);
}

bool Broadcaster::isListening(int id) const {
    BroadcasterData* data = data_.load(std::memory_order_acquire);
    if (!data) return false;
    LockRef guard(data->getLock());
    return data->isListening(id);
}

} // namespace KrCore
