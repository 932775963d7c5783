// Prints the locale that the library reads from the system, for the tests that set the environment.

#include <krcore/foundation/InitTerm.h>
#include <krcore/text/Localizer.h>
#include <krcore/text/String.h>

#include <cstdio>

using namespace KrCore;

int main() {
    InitTerm::init();
    for (const unsigned short unit : Localizer::getLocale())
        std::putchar(unit);
    InitTerm::exit();
}
