#include "platform/Event.h"

#include <pthread.h>

#include <new>

namespace KrCore::Platform {

struct Event {
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    pthread_cond_t condition = PTHREAD_COND_INITIALIZER;
    bool isSignalled = false;
};

std::size_t eventByteCount() { return sizeof(Event); }

Event* makeEvent(void* place) {
    static_assert(alignof(Event) <= 8);
    return new (place) Event;
}

void destroyEvent(Event* event) {
    pthread_cond_destroy(&event->condition);
    pthread_mutex_destroy(&event->mutex);
}

void signalEvent(Event* event) {
    pthread_mutex_lock(&event->mutex);
    event->isSignalled = true;
    pthread_cond_signal(&event->condition);
    pthread_mutex_unlock(&event->mutex);
}

void waitForEvent(Event* event) {
    pthread_mutex_lock(&event->mutex);
    while (!event->isSignalled)
        pthread_cond_wait(&event->condition, &event->mutex);
    event->isSignalled = false;
    pthread_mutex_unlock(&event->mutex);
}

} // namespace KrCore::Platform
