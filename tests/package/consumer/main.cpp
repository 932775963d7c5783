// A program as an outside user writes it: the one header, a host object, a value in and out.

#include <krcore/krcore.h>

#include <cstdio>

using namespace KrCore;

namespace {

bool storesAndReadsAProperty() {
    auto object = InterfacePtr<LiveObject>::adopt(new LiveObject("Thing", true));
    Variant read;
    return object->put(String("width"), Variant(42), 0, nullptr) == 0 &&
           object->get(String("width"), read, nullptr) == 0 && read.getInteger() == 42;
}

} // namespace

int main() {
    InitTerm::init();
    const bool works = getVersion() == 263430 && storesAndReadsAProperty();
    InitTerm::exit();
    std::puts(works ? "the installed library works" : "the installed library FAILS");
    return works ? 0 : 1;
}
