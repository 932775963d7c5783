#include "support/Threads.h"

#include <krcore/text/Localizer.h>
#include <krcore/text/String.h>

#include <gtest/gtest.h>

using namespace KrCore;

namespace {

class Translator : public Localizer {
protected:
    bool localizeText(String& text) const override {
        text.toUpper();
        return true;
    }
};

} // namespace

TEST(LocalizerThreads, EachHasItsOwnLocalizersAndAllOneLocale) {
    const Translator translator;
    Localizer::push(translator);
    Testing::inThreads(8, [](int index) {
        const Translator own;
        EXPECT_EQ(&Localizer::get(), &Localizer::getDefault());
        EXPECT_TRUE(Localizer::localize("text", nullptr) == "text") << "nothing is installed here";
        Localizer::set(&own);
        Localizer::push(own); // The stack goes with the thread.
        for (int round = 0; round < 100; ++round) {
            EXPECT_TRUE(Localizer::localize("text", nullptr) == "TEXT") << index;
            EXPECT_FALSE(Localizer::getLocale().isEmpty());
        }
    });
    EXPECT_EQ(Localizer::pop(), &translator);
    EXPECT_EQ(Localizer::pop(), nullptr);
}
