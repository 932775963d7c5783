// The smallest host: one class that scripts could use, declared in a table, and what a script
// engine does with it.

#include <krcore/krcore.h>

#include <cstdio>

using namespace KrCore;

namespace {

/// A lamp with a brightness from 0 to 100, a read-only colour and a method that switches it off.
class Lamp : public LiveObject {
public:
    Lamp() : LiveObject("Lamp", false) { propertyManager = &manager(); }

    /// One manager for all lamps; it must be gone before the library is.
    static LivePropertyManager& manager() {
        if (!manager_) manager_ = new LivePropertyManager(table);
        return *manager_;
    }
    static void forgetManager() {
        delete manager_;
        manager_ = nullptr;
    }

    using LiveObject::call;
    using LiveObject::get;
    using LiveObject::put;

    int get(int id, Variant& result, Error* err) const override {
        if (!isValid()) return LiveObject::get(id, result, err);
        switch (id) {
        case Brightness:
            result = brightness_;
            return ErrorCode::Ok;
        case Colour:
            result = "warm white";
            return ErrorCode::Ok;
        default:
            return LiveObject::get(id, result, err);
        }
    }

    int put(int id, Variant const& value, Error* err) override {
        if (!isValid() || id != Brightness) return LiveObject::put(id, value, err);
        const int percent = value.getInteger();
        if (percent < 0 || percent > 100) return setError(ErrorCode::OutOfRange, id, err, false);
        brightness_ = percent;
        return ErrorCode::Ok;
    }

    int call(int id, Array const& args, Variant& result, Error* err) override {
        if (!isValid() || id != SwitchOff) return LiveObject::call(id, args, result, err);
        result = brightness_;
        brightness_ = 0;
        return ErrorCode::Ok;
    }

private:
    enum : int { Brightness = 1, Colour, SwitchOff };

    static constexpr LivePropertyInfo table[] = {
        {"brightness", Brightness, static_cast<int>(InfoType::ReadWrite), "number;0;100\tPer cent"},
        {"colour", Colour, static_cast<int>(InfoType::ReadOnly), "string\tColour of the light"},
        {"switchOff", SwitchOff, static_cast<int>(InfoType::Method),
         "number\tGives the last brightness"},
        {nullptr, 0, 0, nullptr}};

    inline static LivePropertyManager* manager_ = nullptr;

    int brightness_ = 40;
};

void show(const char* what, int code, Variant const& value, Error const& error) {
    String line;
    line.print("%s: code %d, value %ls", what, code, value.getString().wstr());
    if (code != 0) {
        String text;
        error.getFullText(text);
        line += " (" + text + ")";
    }
    std::puts(line.encode(nullptr));
}

/// What a script engine does for lamp.brightness, lamp.brightness = 250 and lamp.switchOff().
void useLamp() {
    auto lamp = InterfacePtr<Lamp>::adopt(new Lamp);
    Variant value;
    Error error;

    show("lamp.brightness", lamp->get("brightness", value, &error), value, error);
    show("lamp.brightness = 250", lamp->put("brightness", Variant(250), -1, &error), Variant(),
         error);
    error.erase();
    show("lamp.switchOff()", lamp->call("switchOff", value, &error), value, error);
    show("lamp.colour", lamp->get("colour", value, &error), value, error);

    lamp->invalidate(); // the real lamp is gone; scripts may still hold the object
    show("lamp.colour", lamp->get("colour", value, &error), value, error);
}

} // namespace

int main() {
    InitTerm::init();
    useLamp();
    Lamp::forgetManager();
    InitTerm::exit();
    return 0;
}
