#pragma once

#include <krcore/containers/Array.h>
#include <krcore/containers/SimpleArray.h>
#include <krcore/foundation/InitTerm.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live.h>
#include <krcore/messages.h>
#include <krcore/values/Error.h>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace KrCore::Testing {

template <class T, class... Args>
InterfacePtr<T> make(Args&&... args) {
    return InterfacePtr<T>::adopt(new T(std::forward<Args>(args)...));
}

/// A listener made of a function.
class Ear : public Listener {
public:
    using Reaction = std::function<bool(Message&)>;
    explicit Ear(Reaction reaction) : reaction_(std::move(reaction)) {}
    bool notify(Message& message) override { return reaction_(message); }

    /// One that answers live objects and lets other messages pass.
    static Reaction answering(std::function<bool(LiveMessage&)> answer) {
        return [answer](Message& message) { return answer(static_cast<LiveMessage&>(message)); };
    }

private:
    Reaction reaction_;
};

/// What a host class looks like: a table, and overrides for the properties in it.
class Shape : public LiveObject {
public:
    enum ID { Width = 1, Area, Resize, Scale, Secret, Internal, French, Plus = 0x1FF10105 };

    explicit Shape(const char* className = "Shape", bool dynamic = true)
        : LiveObject(className, dynamic) {
        if (!manager) {
            manager = new LivePropertyManager(table());
            InitTerm::atExit([] { delete std::exchange(manager, nullptr); });
        }
        propertyManager = manager;
        ++living;
    }
    ~Shape() override { --living; }

    using LiveObject::call;
    using LiveObject::get;
    using LiveObject::put;
    int get(int id, Variant& result, Error* err) const override {
        if (id == Width) return result = width, 0;
        if (id == Area) return result = width * width, 0;
        return LiveObject::get(id, result, err);
    }
    int put(int id, const Variant& value, Error* err) override {
        if (id == Width && value.getInteger() < 0) return 41; // which leaves recording to others
        if (id == Width) return width = value.getInteger(), 0;
        return LiveObject::put(id, value, err);
    }
    int call(int id, const Array& args, Variant& result, Error* err) override {
        if (id != Resize) return LiveObject::call(id, args, result, err);
        width += args[0].getInteger();
        result = width;
        return 0;
    }

    static const LivePropertyInfo* table() {
        static constexpr LivePropertyInfo rows[] = {
            {"", 100, 5, "Shape"},
            {"width", Width, 2, "number"},
            {"area", Area, 1, "number"},
            {"resize", Resize, 5, "undefined,by:number"},
            {"scale", Scale, 6, "number/number"},
            {"secret", Secret, 2 | PropertyFlag::Hidden, nullptr},
            {"internal", Internal, 1 | PropertyFlag::Internal, nullptr},
            {"largeur", French, 2 | 0x020000, nullptr},
            {"+", Plus, 5, nullptr},
            {nullptr, 0, 0, nullptr}};
        return rows;
    }

    int width = 10;
    static inline std::atomic<int> living = 0;
    static inline LivePropertyManager* manager = nullptr;
};

/// A component made of functions; what is left empty behaves like the base class.
class Gadget : public LiveComponent {
public:
    ~Gadget() override { --living; }
    Gadget() { ++living; }

    void use(LivePropertyManager* manager) { propertyManager = manager; }

    void reset() override {
        ++resets;
        if (onReset) onReset();
    }
    int getIDForName(const LiveObject& owner, const String& name, int& id, InfoType& kind,
                     int flags) const override {
        if (!onName) return LiveComponent::getIDForName(owner, name, id, kind, flags);
        return onName(name, id, kind);
    }
    InfoType getType(const LiveObject& owner, int id) override {
        return onType ? onType(id) : LiveComponent::getType(owner, id);
    }
    int enumerate(const LiveObject& owner, SimpleArray& ids, int flags) const override {
        if (offered.length() == 0) return LiveComponent::enumerate(owner, ids, flags);
        ids += offered;
        return 0;
    }
    bool hasOperators() const override { return operators; }
    int get(const LiveObject& owner, int id, Variant& result, Error* err) const override {
        return onGet ? onGet(id, result) : LiveComponent::get(owner, id, result, err);
    }
    int put(LiveObject& owner, int id, const Variant& value, Error* err) override {
        return onPut ? onPut(id, value) : LiveComponent::put(owner, id, value, err);
    }
    int call(LiveObject& self, int id, const Array& args, Variant& result, Error* err) override {
        return onCall ? onCall(id, args, result) : LiveComponent::call(self, id, args, result, err);
    }
    bool isGeneric(int) const override { return generic; }
    bool isIndexable() const override { return indexable; }

    std::function<void()> onReset;
    std::function<int(const String&, int&, InfoType&)> onName;
    std::function<InfoType(int)> onType;
    std::function<int(int, Variant&)> onGet;
    std::function<int(int, const Variant&)> onPut;
    std::function<int(int, const Array&, Variant&)> onCall;
    SimpleArray offered;
    int resets = 0;
    bool operators = false, generic = false, indexable = false;
    static inline std::atomic<int> living = 0;
};

inline InterfacePtr<LiveObject> makePlain(const char* className = "Thing", bool dynamic = true) {
    return make<LiveObject>(className, dynamic);
}

inline std::vector<int> idsOf(const LiveObject& object, int flags, int expectedCode = 0) {
    SimpleArray ids;
    EXPECT_EQ(object.enumerate(ids, flags), expectedCode);
    return {ids.begin(), ids.end()};
}

/// The text an error carries, in the form "code: message".
inline std::string told(const Error& err) {
    String text;
    err.getFullText(text);
    std::string result = std::to_string(err.getCode()) + ": ";
    for (unsigned short unit : text)
        result += static_cast<char>(unit);
    return result;
}

inline std::string narrow(const String& text) { return {text.begin(), text.end()}; }

constexpr int allProperties = RequestFlag::ReadOnly | RequestFlag::ReadWrite;

} // namespace KrCore::Testing
