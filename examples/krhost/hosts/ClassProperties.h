#pragma once

#include <krcore/foundation/InitTerm.h>
#include <krcore/live/LivePropertyInfo.h>
#include <krcore/live/LivePropertyManager.h>

#include <utility>

namespace krhost {

/// The property manager of a class whose table is `table`, or that has more than one: made when
/// first asked for, deleted when the library shuts down.
template <const KrCore::LivePropertyInfo* table, const KrCore::LivePropertyInfo*... more>
KrCore::LivePropertyManager* classProperties() {
    static KrCore::LivePropertyManager* manager = nullptr;
    if (!manager) {
        manager = new KrCore::LivePropertyManager(table);
        (manager->registerProperties(more), ...);
        KrCore::InitTerm::atExit([] { delete std::exchange(manager, nullptr); });
    }
    return manager;
}

} // namespace krhost
