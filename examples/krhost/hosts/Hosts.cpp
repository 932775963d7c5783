#include "hosts/Hosts.h"

#include "LibraryCalls.h"
#include "hosts/Box.h"
#include "hosts/CaptureObject.h"
#include "hosts/Document.h"
#include "hosts/FileObject.h"
#include "hosts/FolderObject.h"
#include "hosts/Lines.h"
#include "hosts/List.h"
#include "hosts/MatchObject.h"
#include "hosts/RegExpObject.h"
#include "hosts/SeekFrom.h"
#include "hosts/Settings.h"
#include "hosts/XMLNode.h"

#include <krcore/live/ClassInfo.h>

namespace krhost::Hosts {

namespace {

/// Of all host classes, also those that scripts cannot construct.
constexpr int sampleFlags = 2;
static_assert((LibraryCalls::factoryFlags & sampleFlags) == 0);

template <class Host>
void registerFactory(int flags = LibraryCalls::factoryFlags | sampleFlags) {
    const auto factory = KrCore::InterfacePtr<Host>::adopt(new Host);
    KrCore::LiveObject::addFactory(*factory, flags);
}

} // namespace

void registerFactories() {
    registerFactory<Box>();
    registerFactory<Settings>();
    registerFactory<Document>();
    registerFactory<Lines>(sampleFlags);
    registerFactory<List>();
    registerFactory<XMLNode>();
    registerFactory<FileObject>();
    registerFactory<FolderObject>();
    registerFactory<SeekFrom>(sampleFlags);
    registerFactory<RegExpObject>();
    registerFactory<MatchObject>(sampleFlags);
    registerFactory<CaptureObject>(sampleFlags);
}

KrCore::LiveObject* findSample(const KrCore::String& className) {
    return KrCore::LiveObject::getFactory(className, sampleFlags);
}

KrCore::InterfacePtr<const KrCore::ClassInfo> describe(const KrCore::String& className) {
    const KrCore::LiveObject* sample = findSample(className);
    return KrCore::InterfacePtr<const KrCore::ClassInfo>::adopt(
        sample ? sample->getClassInfo(KrCore::RequestFlag::Library) : nullptr);
}

} // namespace krhost::Hosts
