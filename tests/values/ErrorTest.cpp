#include "support/FailingAllocator.h"

#include <krcore/foundation/Cloneable.h>
#include <krcore/live/LiveObject.h>
#include <krcore/text/Localizer.h>
#include <krcore/text/String.h>
#include <krcore/values/Error.h>
#include <krcore/values/Variant.h>

#include <gtest/gtest.h>

#include <climits>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

String fullText(const Error& error) {
    String text;
    error.getFullText(text);
    return text;
}

String messageOf(int code, const char* entryText = "") {
    String text = entryText;
    KrGetErrorMsg(code, text);
    return text;
}

/// What a reporter attaches.
class Attachment : public Cloneable {
public:
    explicit Attachment(int number) : value(number) {}
    int clone(Cloneable** result, bool) const override {
        *result = new Attachment(value);
        return 0;
    }

    const int value;
};

int attachedValue(const Error& error) {
    const auto* data = dynamic_cast<const Attachment*>(error.getError()->getData());
    return data ? data->value : 0;
}

TEST(Error, StacksItsRecordsNewestFirst) {
    Error error;
    EXPECT_EQ(error.getCode(), 0);
    EXPECT_EQ(error.getError(), nullptr);
    EXPECT_EQ(error.getErrorData(), nullptr);
    EXPECT_EQ(fullText(error), "");
    error.push(52, nullptr);
    error.push(ErrorCode::NotFound, "width", nullptr, true);
    error.push(-34, "as it is", nullptr, false);
    EXPECT_EQ(error.getCode(), -34);
    EXPECT_EQ(fullText(error), "as it is\n- width is undefined\n- I/O error");
    const ErrorInfo* record = error.getError()->getNext();
    EXPECT_EQ(record->getCode(), 2);
    EXPECT_EQ(record->getText(), "width is undefined");
    EXPECT_EQ(record->getLine(), -1);
    EXPECT_EQ(record->getOffset(), -1);
    EXPECT_EQ(record->getColumn(), -1);
    EXPECT_EQ(record->getLength(), 0);
    EXPECT_EQ(record->getNext()->getNext(), nullptr);
    error.erase();
    EXPECT_EQ(error.getCode(), 0);
    EXPECT_EQ(Error(41, "index", true).getError()->getText(), "index is out of range");
}

TEST(Error, FillsInTheArgumentAsItIs) {
    const struct {
        int code;
        const char* argument;
        const char* text;
    } rows[] = {
        {1, "%1 and %1", "%1 and %1"},
        {24, "a\\nb^T=", "a\\nb^T= is not a function"},
        {31, "$$$/Key=value", "Bad or invalid URI: $$$/Key=value"},
        {200, "x", "Error #x"},
        {52, "unused", "I/O error"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Error(row.code, row.argument, true).getError()->getText(), row.text) << row.code;
    Error::defineError(300, "%1 or %1", nullptr);
    EXPECT_EQ(Error(300, "one %1", true).getError()->getText(), "one %1 or one %1");
    Error::undefineError(300);
    Error plain;
    plain.push(24, nullptr);
    EXPECT_EQ(fullText(plain), "%1 is not a function");
}

TEST(Error, KeepsAValueAsErrorData) {
    Error error;
    error.push(44, Variant(12.5), nullptr);
    error.push(19, Variant("text"), nullptr);
    EXPECT_EQ(fullText(error), "Bad argument text\n- Cannot convert");
    EXPECT_EQ(error.getErrorData()->getString(), "text");
    const Error copy = error;
    error.setMoreInfo("source", 1, 2, 3, 4); // Unshares.
    EXPECT_EQ(error.getErrorData()->getString(), "text");
    EXPECT_EQ(error.getError()->getNext()->getErrorData()->getDouble(), 12.5);
    error.push(8, nullptr);
    EXPECT_EQ(error.getErrorData()->getType(), VariantType::Undefined);
}

TEST(Error, NamesThePropertyOfALiveObject) {
    auto* object = new LiveObject("Thing", true);
    Error error;
    error.push(ErrorCode::ReadOnly, *object, 7, true, nullptr);
    error.push(ErrorCode::NotAFunction, *object, 7, false, nullptr);
    EXPECT_EQ(fullText(error), "{LiveObject(\"Thing\").property(7)} is not a function\n- "
                               "{LiveObject(\"Thing\").property(7)} is read only");
    object->release();
}

/// Runs out of memory while it is asked for a text, and reports into the same error.
class ExhaustedObject : public LiveObject {
public:
    explicit ExhaustedObject(Error& report) : LiveObject("Exhausted", false), error(report) {}
    using LiveObject::getErrorText;
    int getErrorText(String&, int, int, bool) const override {
        error.push(-28, nullptr);
        return -28;
    }

    Error& error;
};

TEST(Error, EndsWhileAnObjectIsAsked) {
    Error error;
    auto* object = new ExhaustedObject(error);
    error.push(ErrorCode::ReadOnly, *object, 7, true, nullptr);
    EXPECT_EQ(error.getCode(), -28);
    EXPECT_EQ(error.getError()->getNext(), nullptr);
    object->release();
}

TEST(Error, ClonesWhatIsAttached) {
    Error error;
    {
        const Attachment attachment(5);
        error.push(8, &attachment);
        error.push(9, "word", &attachment, true);
    }
    EXPECT_EQ(attachedValue(error), 5);
    const Error copy = error;
    error.push(8, nullptr);
    EXPECT_EQ(attachedValue(copy), 5);
    EXPECT_EQ(error.getError()->getData(), nullptr);
    EXPECT_NE(error.getError()->getNext()->getData(), copy.getError()->getData());
}

TEST(Error, SharesItsRecordsUntilACopyChanges) {
    Error error(52, "", true);
    error.setMoreInfo("var a", 10, 4, 5, 3);
    const Error copy = error;
    EXPECT_EQ(copy.getError(), error.getError());
    error.push(45, nullptr);
    error.setMoreInfo("later", 11, 0, 0, 0);
    EXPECT_EQ(fullText(copy), "I/O error");
    const ErrorInfo& record = *error.getError()->getNext();
    EXPECT_NE(&record, copy.getError());
    EXPECT_EQ(record.getSource(), "var a");
    EXPECT_EQ(record.getFile(), "");
    EXPECT_EQ(record.getLine(), 10);
    EXPECT_EQ(record.getOffset(), 4);
    EXPECT_EQ(record.getColumn(), 5);
    EXPECT_EQ(record.getLength(), 3);
    error = copy;
    EXPECT_EQ(error.getError(), copy.getError());
    error = *&error;
    error.erase();
    EXPECT_EQ(copy.getCode(), 52);
    error.setMoreInfo("nothing to say it of", 1, 1, 1, 1);
    EXPECT_EQ(error.getError(), nullptr);
}

TEST(Error, TakesRecordsOfOtherErrorsAndOfItself) {
    Error older(1, "a", true);
    older.push(1, "b", nullptr, true);
    Error error(1, "c", true);
    error.push(older);
    EXPECT_EQ(fullText(error), "b\n- a\n- c");
    error.push(error);
    EXPECT_EQ(fullText(error), "b\n- a\n- c\n- b\n- a\n- c");
    const Error shared = older;
    older.push(shared);
    older.push(*older.getError());
    EXPECT_EQ(fullText(older), "b\n- b\n- a\n- b\n- a");
    older.push(Error());
    EXPECT_EQ(fullText(shared), "b\n- a");
    Error empty;
    empty.push(shared);
    EXPECT_EQ(fullText(empty), "b\n- a");
    empty.push(24, empty.getError()->getText(), nullptr, true);
    EXPECT_EQ(empty.getError()->getText(), "b is not a function");
}

TEST(Error, EndsWithAConditionThatTakesNoMemory) {
    const struct {
        int code;
        int stored;
        const char* text;
    } rows[] = {{-28, -28, "Out of memory"},
                {28, -28, "Out of memory"},
                {-29, -29, "Uncaught Exception"},
                {29, -29, "Uncaught Exception"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.code);
        Error error;
        {
            const FailingScope noMemory(0, Shortage::Lasting);
            error.push(row.code, nullptr);
            const Error copy = error;
            EXPECT_FALSE(FailingScope::hasFailed());
        }
        error.push(8, "x", nullptr, true);
        error.push(8, Variant(1), nullptr);
        error.push(8, nullptr);
        error.push(Error(8, "x", true));
        error.setMoreInfo("source", 1, 1, 1, 1);
        EXPECT_EQ(error.getCode(), row.stored);
        EXPECT_EQ(fullText(error), row.text);
        EXPECT_EQ(error.getError()->getLine(), -1);
        Error(error).erase();
        error.erase();
        error.push(8, nullptr);
        EXPECT_EQ(error.getCode(), 8);
    }
    Error ordinary(-29, "in f()", true);
    EXPECT_EQ(fullText(ordinary), "Uncaught exception in f()");
    ordinary.push(-28, nullptr);
    ordinary.push(8, nullptr);
    EXPECT_EQ(fullText(ordinary), "Syntax error\n- Out of memory\n- Uncaught exception in f()");
}

TEST(Error, HoldsVeryManyRecords) {
    Error error;
    for (int i = 0; i < 300000; ++i)
        error.push(1, "x", nullptr, false);
    EXPECT_EQ(fullText(error).length(), 300000 * 4 - 3);
    const Error copy = error;
    error.push(8, nullptr);
    EXPECT_EQ(copy.getCode(), 1);
}

TEST(Error, GivesEverythingBackWhenMemoryIsShort) {
    for (const Shortage shortage : {Shortage::Passing, Shortage::Lasting, Shortage::UntilFlush}) {
        forEachFailure(
            [] {
                const Attachment attachment(1);
                Error error(24, "f", true);
                error.push(19, Variant("v"), &attachment);
                const Error copy = error;
                error.push(copy);
                error.setMoreInfo("source", 1, 2, 3, 4);
                error.getErrorData();
                error.getError()->getNext()->getErrorData();
                fullText(error);
                Error::defineError(500, "defined", "HostError");
                Error::undefineError(500);
            },
            shortage);
        Error::undefineError(500);
    }
}

TEST(KrGetErrorMsg, GivesTheMessageOfTheTable) {
    const struct {
        int code;
        const char* text;
    } rows[] = {{0, ""},
                {1, "%1"},
                {-28, "Out of memory"},
                {29, "Uncaught exception %1"},
                {37, "Character conversion error"},
                {79, "Lumascript error: %1"},
                {80, "Error #%1"},
                {INT_MAX, "Error #%1"},
                {INT_MIN, "Error #%1"}};
    for (const auto& row : rows)
        EXPECT_EQ(messageOf(row.code), row.text) << row.code;
    EXPECT_EQ(messageOf(24, "mine"), "%1 is not a function");
    EXPECT_EQ(messageOf(1000, "mine\\n"), "mine\\n");
}

/// Answers with the key that it is asked for, and with what error it belongs to.
class KeyRecorder : public Localizer {
public:
    mutable String key;
    mutable int code = 0;

protected:
    bool getZString(String& text, const String&, const String&) const override {
        key = text;
        return false;
    }
    bool getErrorMsg(int asked, String& text) const override {
        code = asked;
        if (asked != 45) return false;
        text = "translated";
        return true;
    }
};

TEST(KrGetErrorMsg, AsksTheLocalizerUnderTheKeyOfTheCode) {
    const KeyRecorder localizer;
    Localizer::push(localizer);
    messageOf(-28);
    EXPECT_EQ(localizer.key, "$$$/CT/Marlscript/Errors/Err28=Out of memory");
    EXPECT_EQ(localizer.code, 28);
    messageOf(1000);
    EXPECT_EQ(localizer.key, "$$$/CT/Marlscript/Errors/General=Error #%1");
    EXPECT_EQ(messageOf(45), "translated");
    EXPECT_EQ(Error(45, "", true).getError()->getText(), "translated");
    Error::defineError(1000, "a\\tb", nullptr);
    EXPECT_EQ(messageOf(1000), "a\tb");
    EXPECT_EQ(localizer.key, "$$$/CT/Marlscript/Errors/Err1000=a\\tb");
    localizer.key.erase();
    EXPECT_EQ(messageOf(1000, "mine"), "a\\tb") << "no key, hence no pairs";
    EXPECT_EQ(localizer.key, "");
    Error::undefineError(1000);
    EXPECT_TRUE(Localizer::remove(localizer));
}

struct Definition {
    bool isKnown;
    String text;
    String className;
};

Definition definitionOf(int code) {
    Definition definition;
    definition.isKnown = Error::getErrorDefinition(code, definition.text, definition.className);
    return definition;
}

TEST(ErrorDefinition, IsThatOfTheTable) {
    const struct {
        int code;
        bool isKnown;
        const char* text;
        const char* className;
    } rows[] = {
        {0, false, "", "Error"},
        {2, true, "%1 is undefined", "ReferenceError"},
        {-2, true, "%1 is undefined", "ReferenceError"},
        {-27, true, "Stack overrun", "InternalError"},
        {33, true, "Internal error", "InternalError"},
        {36, true, "Not implemented", "FatalError"},
        {43, true, "Evaluation error", "EvalError"},
        {58, true, "I/O Timeout", "IOError"},
        {78, true, "Cannot set property %1", "TypeError"},
        {80, false, "Error #%1", "Error"},
        {INT_MIN, false, "Error #%1", "Error"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.code);
        const Definition definition = definitionOf(row.code);
        EXPECT_EQ(definition.isKnown, row.isKnown);
        EXPECT_EQ(definition.text, row.text);
        EXPECT_EQ(definition.className, row.className);
    }
}

TEST(ErrorDefinition, OfTheHostComesFirst) {
    Error::defineError(-500, "host %1", "HostError");
    Error::defineError(2, "replaced", nullptr);
    Error::defineError(INT_MIN, "lowest", "HostError");
    EXPECT_TRUE(definitionOf(500).isKnown);
    EXPECT_EQ(definitionOf(500).text, "host %1");
    EXPECT_EQ(definitionOf(-500).className, "HostError");
    EXPECT_EQ(definitionOf(2).className, "Error");
    EXPECT_EQ(messageOf(INT_MIN), "lowest");
    EXPECT_EQ(messageOf(2), "replaced");
    Error::defineError(500, "again", "OtherError");
    EXPECT_EQ(definitionOf(500).text, "again");
    EXPECT_TRUE(Error::isErrorClass("HostError"));
    EXPECT_TRUE(Error::isErrorClass("OtherError"));
    Error::undefineError(500);
    Error::undefineError(500);
    Error::undefineError(-2);
    Error::undefineError(INT_MIN);
    EXPECT_FALSE(Error::isErrorClass("HostError"));
    EXPECT_FALSE(Error::isErrorClass("OtherError"));
    EXPECT_EQ(definitionOf(2).text, "%1 is undefined");
}

TEST(ErrorDefinition, KnowsTheErrorClassesOfScripts) {
    for (const char* name : {"Error", "TypeError", "SyntaxError", "ReferenceError", "InternalError",
                             "FatalError", "RangeError", "EvalError", "URIError", "IOError"})
        EXPECT_TRUE(Error::isErrorClass(name)) << name;
    for (const char* name : {"", "error", "Type", "Errors"})
        EXPECT_FALSE(Error::isErrorClass(name)) << name;
}

} // namespace
