#pragma once

#include "live/LivePropertyManagerImpl.h"

#include <cstdint>

namespace KrCore {

/// Answers from a table that the class keeps and does not change. Look-ups scan it from the top;
/// exact names in a longer table go through an index, which leads to the same row.
class StaticPropertyManager : public LivePropertyManagerImpl {
public:
    explicit StaticPropertyManager(const LivePropertyInfo* table);
    ~StaticPropertyManager() override;

    /// A table is constant; the manager becomes a dynamic one instead of calling these.
    void registerProperty(const char* name, int id, int flags, const char* descriptor) override;
    void registerProperties(const LivePropertyInfo* table) override;
    int getIDForName(const String& name, int& id, InfoType& kind, int flags) const override;
    int getNameForID(int id, String& name, int flags) const override;
    InfoType getType(int id) const override;
    int enumerate(SimpleArray& ids, int flags) const override;
    const ServiceInfo* getConstructor(int flags) const override;
    const ServiceInfo* getServiceInfo(const String& name, int flags) const override;
    const ServiceInfo* getServiceInfo(int id, int flags) const override;
    const LivePropertyInfo* getTable() const override { return table_; }

private:
    struct Slot {
        std::uint32_t hash;
        std::uint32_t row; // 1 for the first; 0 marks a free slot
    };

    void buildIndex(unsigned rowCount);
    const LivePropertyInfo* findRow(int id) const;
    const LivePropertyInfo* findRow(const String& name, int flags) const;
    const LivePropertyInfo* scan(const String& name, int flags) const;

    const LivePropertyInfo* table_; // borrowed
    Slot* slots_ = nullptr;         // owned; null for a short table
    unsigned slotMask_ = 0;
};

} // namespace KrCore
