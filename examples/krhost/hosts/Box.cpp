#include "hosts/Box.h"

#include "hosts/ClassProperties.h"
#include "hosts/HostClassInfo.h"

#include <krcore/containers/Array.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/values/Error.h>
#include <krcore/values/Point.h>

#include <limits>

namespace krhost {

using namespace KrCore;

namespace {

enum BoxID : int {
    Width = 1,
    Height,
    Position,
    Bounds,
    Area,
    Title,
    Tags,
    OnResize,
    Serial,
    Resize,
    Contains,
    ToString,
    ValueOf,
    Plus = PropertyID::FirstOperator + 5 // "+"
};

constexpr int readOnly = int(InfoType::ReadOnly);
constexpr int readWrite = int(InfoType::ReadWrite);
constexpr int method = int(InfoType::Method);

constexpr LivePropertyInfo boxTable[] = {
    {"", PropertyID::Constructor, method,
     "Box\tMakes a box at the origin,width:number;0;;1\tThe width,height:number;0;;1\tThe height"},
    {"width", Width, readWrite, "number;0\tThe distance from the left to the right edge"},
    {"height", Height, readWrite, "number;0\tThe distance from the top to the bottom edge"},
    {"position", Position, readWrite, "Point\tThe upper left corner"},
    {"bounds", Bounds, readWrite, "Rect\tThe four edges\tThey may not enclose nothing."},
    {"area", Area, readOnly, "number;0\tThe width times the height"},
    {"title", Title, int(InfoType::CallableReadWrite),
     "Box/string\tThe title\tCalled it sets the title and gives the box.,"
     "title:string;;;undefined\tThe new title"},
    {"tags", Tags, readWrite, "any\tWhatever the script likes to keep here"},
    {"onResize", OnResize, readWrite,
     "Function;;;null\tCalled with the box after each call of resize"},
    {"serial", Serial, readOnly | PropertyFlag::Hidden,
     "number;1\tCounts the boxes of this program\tLeft out when a script lists the properties."},
    {"resize", Resize, method,
     "Box\tSets both extents and calls onResize,width:number;0\tThe new width,"
     "height:number;0\tThe new height"},
    {"contains", Contains, method,
     "boolean\tWhether a point lies in the box,point:Point\tThe point"},
    {"toString", ToString, method, "string\tThe title and the extents"},
    {"valueOf", ValueOf, method, "number\tThe area"},
    {"+", Plus, method, "Box\tThe smallest box around both,other:Box\tThe other box"},
    {nullptr, 0, 0, nullptr}};

constexpr ClassTexts boxTexts = {.description = "A rectangle with a title.",
                                 .sample =
                                     "var box = new Box(4, 3);\n"
                                     "box.onResize = function (which) { print(which.area); };\n"
                                     "box.title(\"Lid\").resize(2, 2);"};

/// 0, or what is wrong with a value that shall be a width or height.
int checkExtent(const Variant& value) {
    if (const int code = value.validate(VariantType::Number); code != ErrorCode::Ok) return code;
    return value.validate(0.0, std::numeric_limits<double>::max());
}

int nextSerial() {
    static int last = 0;
    return ++last;
}

} // namespace

Box::Box() : LiveObject("Box", false), bounds_(0, 0, 1, 1), serial_(nextSerial()) {
    propertyManager = classProperties<boxTable>();
}

int Box::clone(LiveObject** result, bool deep) const {
    const auto copy = InterfacePtr<Box>::adopt(new Box);
    if (const int code = cloneContent(*copy, deep); code != ErrorCode::Ok) {
        *result = nullptr;
        return code;
    }
    copy->bounds_ = bounds_;
    copy->title_ = title_;
    copy->tags_ = tags_;
    copy->onResize_ = onResize_;
    copy->addRef();
    *result = copy.get();
    return ErrorCode::Ok;
}

int Box::initialize(const Array& args, Error* err) {
    if (args.length() == 0) return ErrorCode::Ok;
    return setError(setSize(args[0], args[1]), PropertyID::Constructor, err, false);
}

InfoType Box::getType(int id) {
    const InfoType kind = propertyManager->getType(id);
    return kind != InfoType::Unknown ? kind : LiveObject::getType(id);
}

const ClassInfo* Box::getClassInfo(int flags) const {
    return HostClassInfo::describe(*this, flags, boxTexts);
}

int Box::get(int id, Variant& result, Error* err) const {
    result.erase();
    const int code = isValid() ? read(id, result) : int(ErrorCode::ObjectInvalid);
    if (code == ErrorCode::NotFound) return LiveObject::get(id, result, err);
    return setError(code, id, err, false);
}

int Box::read(int id, Variant& result) const {
    switch (id) {
    case Width:
        result = width();
        break;
    case Height:
        result = height();
        break;
    case Position:
        result = Point(bounds_.left, bounds_.top);
        break;
    case Bounds:
        result = bounds_;
        break;
    case Area:
        result = width() * height();
        break;
    case Title:
        result = title_;
        break;
    case Tags:
        result = tags_;
        break;
    case OnResize:
        result = onResize_;
        break;
    case Serial:
        result = serial_;
        break;
    default:
        return ErrorCode::NotFound;
    }
    return ErrorCode::Ok;
}

int Box::put(int id, const Variant& value, Error* err) {
    int code = isValid() ? write(id, value) : int(ErrorCode::ObjectInvalid);
    if (code == ErrorCode::NotFound) return LiveObject::put(id, value, err);
    if (code == ErrorCode::Ok) code = invokeAutostore(err);
    return setError(code, id, err, false);
}

int Box::write(int id, const Variant& value) {
    switch (id) {
    case Width:
        return setSize(value, Variant(height()));
    case Height:
        return setSize(Variant(width()), value);
    case Position:
        if (!value.getPoint()) return ErrorCode::TypeMismatch;
        bounds_.moveTo(*value.getPoint());
        break;
    case Bounds:
        if (!value.getRect()) return ErrorCode::TypeMismatch;
        if (value.getRect()->isEmpty()) return ErrorCode::OutOfRange;
        bounds_ = *value.getRect();
        break;
    case Title:
        title_ = value.getString();
        break;
    case Tags:
        tags_ = value;
        break;
    case OnResize:
        onResize_ = value;
        break;
    case Area:
    case Serial:
        return ErrorCode::ReadOnly;
    default:
        return ErrorCode::NotFound;
    }
    return ErrorCode::Ok;
}

int Box::setSize(const Variant& width, const Variant& height) {
    for (const Variant* extent : {&width, &height}) {
        if (const int code = checkExtent(*extent); code != ErrorCode::Ok) return code;
    }
    bounds_.right = bounds_.left + width.getDouble();
    bounds_.bottom = bounds_.top + height.getDouble();
    return ErrorCode::Ok;
}

int Box::apply(LiveObject& self, int id, const Array& args, Variant& result, Error* err) const {
    result.erase();
    if (!isValid() || !self.isValid()) return setError(ErrorCode::ObjectInvalid, id, err, false);
    // A script may call a method of this class on anything.
    auto* box = dynamic_cast<Box*>(&self);
    if (!box) return setError(ErrorCode::WrongClass, id, err, false);
    const int code = box->run(id, args, result, err);
    if (code == ErrorCode::NotFound) return LiveObject::apply(self, id, args, result, err);
    return setError(code, id, err, false);
}

int Box::run(int id, const Array& args, Variant& result, Error* err) {
    switch (id) {
    case Title:
        if (args.length() > 0) title_ = args[0].getString();
        result = this;
        return ErrorCode::Ok;
    case Resize:
        result = this;
        return resize(args, err);
    case Contains:
        return contains(args, result);
    case Plus:
        return unite(args, result);
    case ValueOf:
        result = width() * height();
        return ErrorCode::Ok;
    case ToString: {
        String text = title_.isEmpty() ? String("Box ") : title_ + ' ';
        text += Variant(width()).getString() + 'x' + Variant(height()).getString();
        result = text;
        return ErrorCode::Ok;
    }
    case Width:
    case Height:
    case Position:
    case Bounds:
    case Area:
    case Tags:
    case OnResize:
    case Serial:
        return ErrorCode::NotAFunction;
    default:
        return ErrorCode::NotFound;
    }
}

/// Tells the script function in `onResize` about the new size. What it throws is the failure of
/// `resize`, and the script that called that catches the very value.
int Box::resize(const Array& args, Error* err) {
    if (const int code = setSize(args[0], args[1]); code != ErrorCode::Ok) return code;
    LiveObject* function = onResize_.getLiveObject();
    if (!function) return ErrorCode::Ok;
    // The function may put another one in the place of itself.
    const InterfacePtr<LiveObject> alive(function);
    Array news;
    news += *this;
    Variant ignored;
    return function->call("call", news, ignored, err);
}

int Box::contains(const Array& args, Variant& result) const {
    const Point* point = args[0].getPoint();
    if (!point) return ErrorCode::TypeMismatch;
    result = bounds_.isInside(*point);
    return ErrorCode::Ok;
}

int Box::unite(const Array& args, Variant& result) const {
    const auto* other = dynamic_cast<const Box*>(args[0].getLiveObject());
    if (!other) return ErrorCode::TypeMismatch;
    const auto sum = InterfacePtr<Box>::adopt(new Box);
    sum->bounds_.combine(bounds_, other->bounds_);
    result = sum.get();
    return ErrorCode::Ok;
}

} // namespace krhost
