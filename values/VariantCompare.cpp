#include <krcore/values/Variant.h>

#include <krcore/files/FileSpec.h>
#include <krcore/regexp/RegExp.h>
#include <krcore/text/String.h>
#include <krcore/values/Point.h>
#include <krcore/values/Rect.h>
#include <krcore/values/UnitValue.h>

#include <cmath>

namespace KrCore {

namespace {

int compareNumbers(double left, double right) {
    if (std::isnan(left) || std::isnan(right)) return Variant::unordered;
    if (std::isfinite(left) || std::isfinite(right)) {
        const double difference = left - right;
        return difference < 0 ? -1 : difference > 0;
    }
    if (left == right) return 0;
    return left < 0 ? -1 : 1;
}

} // namespace

int Variant::compare(const Variant& other) const {
    int order;
    if (type_ == other.type_ && compareSameKind(other, order)) return order;
    // Undefined is decided before NaN is looked at.
    if (!other.isDefined()) return 1;
    if (!isDefined()) return -1;
    if (isNumeric() || other.isNumeric()) {
        return compareNumbers(getDouble(), other.getDouble());
    }
    // Copies: the text of an object may come from a script that changes either side.
    String left;
    String right;
    toString(left);
    other.toString(right);
    return left.cmp(right);
}

/// False for the kinds that compare as if the kinds were different.
bool Variant::compareSameKind(const Variant& other, int& order) const {
    switch (type_) {
    case VariantType::Undefined:
    case VariantType::Null:
        order = 0;
        return true;
    case VariantType::Bool:
        order = int(payload_.boolean) - int(other.payload_.boolean);
        return true;
    case VariantType::String:
        order = text_->cmp(*other.text_);
        return true;
    case VariantType::Point:
        order = payload_.point->cmp(*other.payload_.point);
        return true;
    case VariantType::Rect:
        order = payload_.rect->cmp(*other.payload_.rect);
        return true;
    case VariantType::FileSpec:
        order = payload_.fileSpec->getPath().cmp(other.payload_.fileSpec->getPath());
        return true;
    case VariantType::RegExp:
        order = payload_.regExp->getPattern().cmp(other.payload_.regExp->getPattern());
        return true;
    case VariantType::UnitValue:
        order = payload_.unitValue->cmp(*other.payload_.unitValue);
        return true;
    case VariantType::Number:
    case VariantType::Object:
    case VariantType::LiveObject:
    case VariantType::Array:
        break;
    }
    return false;
}

} // namespace KrCore
