#include <krcore/containers/Array.h>
#include <krcore/foundation/Callbacks.h>
#include <krcore/text/Localizer.h>
#include <krcore/values/Variant.h>

#include "support/FailingAllocator.h"
#include "support/TextSupport.h"

using namespace KrCore;

namespace {

/// Answers what it has a text for.
class Source : public Localizer {
public:
    const char* keyText = nullptr;
    const char* text = nullptr;
    const char* errorText = nullptr;
    const char* locale = nullptr;
    int order = notCompared;
    mutable String askedKey, askedLocale, askedExtra;

protected:
    bool getZString(String& key, const String& wanted, const String& extra) const override {
        askedKey = key;
        askedLocale = wanted;
        askedExtra = extra;
        return answer(key, keyText);
    }
    bool getLocale(String& offered) const override { return answer(offered, locale); }
    bool localizeText(String& offered) const override { return answer(offered, text); }
    bool localizedCaseConvert(String& offered, bool) const override {
        return answer(offered, text);
    }
    int localizedCompare(const String&, const String&) const override { return order; }
    bool getErrorMsg(int code, String& message) const override {
        return code == 7 && answer(message, errorText);
    }

private:
    static bool answer(String& offered, const char* reply) {
        offered = reply ? reply : "spoilt by somebody who does not answer";
        return reply != nullptr;
    }
};

/// Hands out a text of its own.
class Keeper : public Localizer {
public:
    const String kept{"kept"};

protected:
    bool localizeText(String& text) const override {
        text = kept;
        return true;
    }
};

/// Empties the stack it is asked from.
class Restless : public Localizer {
protected:
    bool localizeText(String&) const override {
        while (Localizer::pop()) {
        }
        return false;
    }
};

class LocaleOfTheHost : public Callbacks {
public:
    bool getLocale(String& locale) const override {
        locale = "ga_IE";
        return true;
    }
};

/// Leaves the thread's localizers as the library set them up.
class LocalizerTest : public testing::Test {
protected:
    void TearDown() override {
        while (Localizer::pop()) {
        }
        Localizer::set(&Localizer::getDefault());
        Localizer::usePerContext(true);
    }
};

String localized(const char* text) { return Localizer::localize(text, nullptr); }

String zString(const String& text) {
    String result = text;
    Localizer::getZString(result);
    return result;
}

} // namespace

TEST_F(LocalizerTest, FillsPlaceholders) {
    Array args;
    args += "World";
    args += 2;
    args += "%1^C\\n";
    const struct {
        const char* text;
        const char* localized;
    } rows[] = {{"$$$/A/B=Hello %1", "Hello World"},
                {"100%% of %4", "100% of "},
                {"%2%1", "2World"},
                {"%02.", "2."},
                {"%0%%1", "%1"},
                {"%x 5 % %", "%x 5 % %"},
                {"%12 %4294967297 %99999999999999999999", "  "},
                {"$$$/A=%3", "%1^C\\n"}, // Verbatim.
                {"", ""}};
    for (const auto& row : rows)
        EXPECT_EQ(Localizer::localize(row.text, &args), row.localized) << row.text;
    EXPECT_EQ(localized("%1, %2"), ", ");
    const Array holes(2);
    EXPECT_EQ(Localizer::localize("<%2>", &holes), "<undefined>");
}

TEST_F(LocalizerTest, ReplacesPairs) {
    const struct {
        const char16_t* text;
        const char16_t* replaced;
    } rows[] = {{u"a^Tb^x", u"a\u2122b^x"},
                {u"\\n\\r\\t\\b\\\\\\q", u"\n\r\t\b\\q"},
                {u"^!^#^A^B^C^D^E^F^I", u"\u00AC\u2318'\u2022\u00A9\u00B0\u00EA/\u2206"},
                {u"^Q^R^S^T^V^b^e^l", u"\"\u00AE\u2211\u2122\\|\u00E9\\"},
                {u"^n^r^t^^^[^]^{^}", u"\n\r\t^\u201C\u201D\u2018\u2019"},
                {u"^\\n", u"^\\n"}, // The "\" belongs to the unknown pair before it.
                {u"x\\", u"x\\"},
                {u"^", u"^"},
                {u"$$$/A=\\n", u"\n"},
                {u"$$$/A=b=^C", u"b=\u00A9"},
                {u"$$$/A=one\ntwo", u"one\ntwo"},
                {u"$$$/A", u""}};
    for (const auto& row : rows)
        EXPECT_EQ(zString(row.text), row.replaced);
}

TEST_F(LocalizerTest, AsksTheCurrentLocalizerThenTheStackFromTheTop) {
    Source current, bottom, top;
    Localizer::set(&current);
    Localizer::push(bottom);
    Localizer::push(top);
    bottom.keyText = "bottom";
    EXPECT_EQ(localized("$$$/K=x\ny"), "bottom");
    EXPECT_EQ(current.askedKey, "$$$/K=x\\ny");
    EXPECT_EQ(top.askedKey, "$$$/K=x\\ny") << "each is offered the text as it was";
    EXPECT_EQ(top.askedExtra, "");
    top.keyText = "top";
    EXPECT_EQ(localized("$$$/K=x"), "top");
    current.keyText = "current ^C";
    EXPECT_EQ(localized("$$$/K=x"), u"current \u00A9");
    EXPECT_EQ(localized("literal"), "literal") << "nobody answers";
    bottom.text = "translated %%";
    EXPECT_EQ(localized("literal"), "translated %");
    Localizer::usePerContext(false);
    EXPECT_EQ(&Localizer::get(), &Localizer::getDefault());
    EXPECT_EQ(localized("$$$/K=x"), "x");
}

TEST_F(LocalizerTest, KeepsAStackAndACurrentLocalizer) {
    Source a, b;
    EXPECT_EQ(&Localizer::get(), &Localizer::getDefault());
    Localizer::set(&a);
    EXPECT_EQ(&Localizer::get(), &a);
    Localizer::set(nullptr);
    EXPECT_EQ(&Localizer::get(), &Localizer::getDefault());

    EXPECT_EQ(Localizer::pop(), nullptr);
    EXPECT_FALSE(Localizer::remove(a));
    for (const Source* each : {&a, &b, &a})
        Localizer::push(*each);
    EXPECT_TRUE(Localizer::remove(a));
    EXPECT_EQ(Localizer::pop(), &a);
    EXPECT_EQ(Localizer::pop(), &b);
    EXPECT_EQ(Localizer::pop(), nullptr);
}

TEST_F(LocalizerTest, NamesTheLocaleToTranslateFor) {
    Source source;
    Localizer::push(source);
    const String users = Localizer::getLocale();
    EXPECT_TRUE(users.length() >= 2 && Localizer::getLocale() == users);
    localized("$$$/K=");
    EXPECT_EQ(source.askedLocale, users);
    source.locale = "xx";
    EXPECT_EQ(Localizer::getLocale(), "xx") << "neither normalised nor remembered";
    localized("$$$/K=");
    EXPECT_EQ(source.askedLocale, "xx");
    LocaleOfTheHost host;
    Callbacks::set(&host);
    localized("$$$/K=");
    Callbacks::set(nullptr);
    EXPECT_EQ(source.askedLocale, "ga_IE");
    source.locale = nullptr;
    EXPECT_EQ(Localizer::getLocale(), users);
}

TEST_F(LocalizerTest, OffersErrorMessages) {
    Source source;
    Localizer::push(source);
    String text = "$$$/Err7=Default ^C";
    EXPECT_FALSE(Localizer::getErrorMessage(7, text));
    EXPECT_EQ(text, u"Default \u00A9");
    source.errorText = "$$$/Other=Resolved \\t";
    EXPECT_TRUE(Localizer::getErrorMessage(7, text));
    EXPECT_EQ(text, "Resolved \t");
    source.errorText = "plain \\t";
    EXPECT_TRUE(Localizer::getErrorMessage(7, text));
    EXPECT_EQ(text, "plain \\t");
    EXPECT_FALSE(Localizer::getErrorMessage(8, text));
}

TEST_F(LocalizerTest, ConvertsCaseAndCompares) {
    Source source;
    Localizer::push(source);
    EXPECT_EQ(Localizer::caseConvert(u"Stra\u00DFe \u00E4", false), u"STRA\u00DFE \u00C4");
    EXPECT_EQ(Localizer::caseConvert("Abc", true), "abc");
    EXPECT_EQ(Localizer::compare("a", "c"), -2);
    source.text = "own";
    source.order = 5;
    EXPECT_EQ(Localizer::caseConvert("Abc", true), "own");
    EXPECT_EQ(Localizer::compare("a", "c"), 5);
}

TEST_F(LocalizerTest, SurvivesALocalizerThatEmptiesTheStack) {
    const Keeper keeper;
    const Restless restless;
    Localizer::push(keeper);
    Localizer::push(restless);
    EXPECT_EQ(localized("text"), "kept");
    EXPECT_EQ(localized("text"), "text");
}

TEST_F(LocalizerTest, LeavesTheTextOfALocalizerUnmarked) {
    const Keeper keeper;
    Localizer::set(&keeper);
    String marked("text");
    marked.makeUnique();
    marked.localize(nullptr);
    EXPECT_EQ(marked, "kept");
    EXPECT_NE(marked.wstr(), keeper.kept.wstr());
    EXPECT_NE(String(marked).wstr(), marked.wstr());
    EXPECT_EQ(String(keeper.kept).wstr(), keeper.kept.wstr());
}

TEST_F(LocalizerTest, GivesEverythingBackWhenMemoryIsShort) {
    const Localizer plain;
    // The stack and the locale are kept.
    Localizer::push(plain);
    Localizer::getLocale();
    Testing::forEachFailure([] {
        Array args;
        args += "argument";
        EXPECT_EQ(Localizer::localize("$$$/K=a ^C and one\nlong %1", &args).length(), 25);
        String message = "$$$/K=Message ^^";
        Localizer::getErrorMessage(1, message);
        Localizer::caseConvert(message, true);
    });
}
