// Reads text as an object literal; what makes an object can be written into that object again.

#include "support/FuzzInput.h"

#include <krcore/live/LiveObject.h>
#include <krcore/values/Error.h>

using namespace KrCore;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::startLibrary();
    const String text = Fuzz::asText(data, size);

    Error err;
    LiveObject* object = nullptr;
    const int code = LiveObject::parseNew(text, object, err, 0);
    Fuzz::require((code == 0) == (object != nullptr), "either an object or a failure");
    Fuzz::require(err.getCode() == code, "a failure is recorded");
    if (!object) {
        Fuzz::require(err.getError()->getLine() >= 1, "a failure has a line");
        return 0;
    }
    Fuzz::require(object->parse(text, 0) == 0, "the same text fits the object it made");
    object->release();
    return 0;
}
