#include "hosts/Hosts.h"

#include "LibraryCalls.h"
#include "hosts/Box.h"
#include "hosts/Document.h"
#include "hosts/FileObject.h"
#include "hosts/FolderObject.h"
#include "hosts/Settings.h"
#include "hosts/XMLNode.h"

#include <krcore/foundation/InterfacePtr.h>

namespace krhost::Hosts {

namespace {

template <class Host>
void registerFactory() {
    const auto factory = KrCore::InterfacePtr<Host>::adopt(new Host);
    KrCore::LiveObject::addFactory(*factory, LibraryCalls::factoryFlags);
}

} // namespace

void registerFactories() {
    registerFactory<Box>();
    registerFactory<Settings>();
    registerFactory<Document>();
    registerFactory<XMLNode>();
    registerFactory<FileObject>();
    registerFactory<FolderObject>();
}

} // namespace krhost::Hosts
