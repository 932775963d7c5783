#include "containers/ArrayData.h"
#include "containers/ArrayScratch.h"
#include "foundation/Context.h"
#include "foundation/ModuleHooks.h"

#include <krcore/text/String.h>

#include <utility>

namespace KrCore {

namespace {

constexpr int maxPrintedElements = 65536;
constexpr int maxPrintedDepth = 100;
constexpr const char* inProgressText = "[this]";
constexpr const char* cutOffText = "[too many elements]";

} // namespace

/// An array whose text is in progress, and those around it: they stand on the stack, the innermost
/// one in the thread's scratch, because the way from one to the next may lead through a host
/// object.
struct ArrayPrinting {
    ArrayPrinting(const BasicArray& printed, const void* printedRecord)
        : array(&printed), record(printedRecord), outer(scratch.printing),
          depth(outer ? outer->depth + 1 : 1), budget(outer ? outer->budget : &ownBudget) {
        scratch.printing = this;
    }
    ArrayPrinting(const ArrayPrinting&) = delete;
    ArrayPrinting& operator=(const ArrayPrinting&) = delete;
    ~ArrayPrinting() { scratch.printing = outer; }

    bool isInProgress() const {
        for (const ArrayPrinting* around = outer; around; around = around->outer) {
            if (around->array == array || (record && around->record == record)) return true;
        }
        return false;
    }
    bool takeOne() const { return *budget > 0 && (*budget)-- > 0; }

    ArrayScratch& scratch = ArrayScratch::get();
    const BasicArray* array;
    const void* record; ///< Of an `Array`: what it shares with its copies. Else null.
    const ArrayPrinting* outer;
    int depth;
    int ownBudget = maxPrintedElements;
    int* budget; ///< Elements that the whole text may still hold.
};

ArrayScratch& ArrayScratch::get() {
    Context* context = currentContext();
    if (!context) throw OutOfMemory();
    if (!context->arrayScratch) context->arrayScratch = new ArrayScratch;
    return *context->arrayScratch;
}

void endArraysOf(Context& context) { delete std::exchange(context.arrayScratch, nullptr); }

const Variant& BasicArray::operator[](unsigned int index) const {
    const Variant* element = get(index);
    return element ? *element : ArrayScratch::get().undefined;
}

void BasicArray::toString(String& text) const {
    String result;
    appendText(result, "", "");
    text = result;
}

void BasicArray::appendText(String& text, const char* opening, const char* closing) const {
    const auto* array = dynamic_cast<const Array*>(this);
    // Host objects among the elements may change the array meanwhile; the copy stays as it is.
    const Array held = array ? array->share() : Array();
    const BasicArray& source = array ? held : *this;
    const ArrayPrinting printing(*this, held.length() > 0 ? held.data_ : nullptr);
    if (printing.isInProgress() || printing.depth > maxPrintedDepth) {
        text.append(printing.isInProgress() ? inProgressText : cutOffText);
        return;
    }
    text.append(opening);
    const unsigned int count = source.length();
    for (unsigned int index = 0; index < count; ++index) {
        if (index > 0) text.append(',');
        if (!printing.takeOne()) {
            text.append(cutOffText);
            break;
        }
        appendElement(text, source[index]);
    }
    text.append(closing);
}

void BasicArray::appendElement(String& text, const Variant& element) {
    switch (element.getType()) {
    case VariantType::Undefined:
    case VariantType::Null:
        break;
    case VariantType::String:
        text.append(element.getString());
        break;
    case VariantType::Array:
        element.getArray()->appendText(text, "[", "]");
        break;
    default:
        // Not by the cache of the element: other threads may read it in arrays that share it.
        String elementText;
        element.toString(elementText);
        text.append(elementText);
    }
}

} // namespace KrCore
