#pragma once

#include "live/LivePropertyManagerImpl.h"

#include <krcore/containers/HashTable.h>
#include <krcore/containers/SimpleArray.h>
#include <krcore/containers/SparseArray.h>

namespace KrCore {

/// Answers from properties that were registered one by one.
class DynamicPropertyManager : public LivePropertyManagerImpl {
public:
    DynamicPropertyManager();
    ~DynamicPropertyManager() override;

    void registerProperty(const char* name, int id, int flags, const char* descriptor) override;
    void registerProperties(const LivePropertyInfo* table) override;
    int getIDForName(const String& name, int& id, InfoType& kind, int flags) const override;
    int getNameForID(int id, String& name, int flags) const override;
    InfoType getType(int id) const override;
    int enumerate(SimpleArray& ids, int flags) const override;
    const ServiceInfo* getConstructor(int flags) const override;
    const ServiceInfo* getServiceInfo(const String& name, int flags) const override;
    const ServiceInfo* getServiceInfo(int id, int flags) const override;
    const LivePropertyInfo* getTable() const override { return nullptr; }

private:
    struct NameInfo;
    struct IDInfo;

    const NameInfo* findRow(const String& name, int request) const;
    const NameInfo* findOtherSpelling(const String& name, int request) const;
    IDInfo* findID(int id) const;
    void enterID(int id, IDInfo& info);
    void leaveID(int id);

    HashTable names_;       // to owned NameInfo*
    SparseArray ids_;       // to owned IDInfo*
    SimpleArray sortedIDs_; // the keys of ids_, ascending
    unsigned registrations_ = 0;
};

} // namespace KrCore
