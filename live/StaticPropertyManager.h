#pragma once

#include "live/LivePropertyManagerImpl.h"

namespace KrCore {

/// Answers from a table that the class keeps; look-ups scan it from the top.
class StaticPropertyManager : public LivePropertyManagerImpl {
public:
    explicit StaticPropertyManager(const LivePropertyInfo* table);

    /// A table is constant; the manager becomes a dynamic one instead of calling these.
    void registerProperty(const char* name, int id, int flags, const char* descriptor) override;
    void registerProperties(const LivePropertyInfo* table) override;
    int getIDForName(const String& name, int& id, InfoType& kind, int flags) const override;
    int getNameForID(int id, String& name, int flags) const override;
    InfoType getType(int id) const override;
    int enumerate(SimpleArray& ids, int flags) const override;
    const LivePropertyInfo* getTable() const override { return table_; }

private:
    const LivePropertyInfo* findRow(int id) const;

    const LivePropertyInfo* table_; // borrowed
};

} // namespace KrCore
