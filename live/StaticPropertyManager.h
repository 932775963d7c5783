#pragma once

#include "live/LivePropertyManagerImpl.h"

#include <cstdint>

namespace KrCore {

/// Answers from a table that the class keeps and does not change. Look-ups scan it from the top;
/// exact names and IDs in a longer table go through an index, which leads to the same row.
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
    /// A slot of two indexes at once. Rows count from 1; 0 marks a slot that is free.
    struct Slot {
        std::uint32_t nameHash;
        std::uint32_t rowOfName;
        std::uint32_t rowOfID;
    };

    void buildIndex(unsigned rowCount);
    void enterName(unsigned row);
    void enterID(unsigned row);
    unsigned slotOf(int id) const;
    const LivePropertyInfo* findRow(int id) const;
    const LivePropertyInfo* findRow(const String& name, int flags) const;
    const LivePropertyInfo* scan(const String& name, int flags) const;

    const LivePropertyInfo* table_; // borrowed
    Slot* slots_ = nullptr;         // owned; null for a short table
    unsigned slotMask_ = 0;
};

} // namespace KrCore
