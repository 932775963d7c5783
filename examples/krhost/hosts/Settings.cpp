#include "hosts/Settings.h"

#include "hosts/ClassProperties.h"
#include "hosts/HostClassInfo.h"

#include <krcore/containers/Array.h>
#include <krcore/containers/SimpleArray.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/messages/LiveMessage.h>
#include <krcore/values/Error.h>

namespace krhost {

using namespace KrCore;

namespace {

/// The IDs of the settings are these and the next ones; the last is the method.
constexpr int firstID = fourCharCode("set0");
constexpr const char* names[] = {"language", "currency", "decimals", "pageWidth", "restore"};
constexpr int restoreIndex = 4;
constexpr int restoreID = firstID + restoreIndex;

/// Nobody's table: the listener answers for these, and this is what it says of them.
constexpr int readWrite = int(InfoType::ReadWrite);
constexpr LivePropertyInfo settingsTable[] = {
    {"", PropertyID::Constructor, int(InfoType::Method), "Settings\tMakes settings of its own"},
    {names[0], firstID, readWrite, "string;;;en\tThe language of texts"},
    {names[1], firstID + 1, readWrite, "string;;;EUR\tThe currency of amounts"},
    {names[2], firstID + 2, readWrite, "number;0;;2\tHow many digits behind the point"},
    {names[3], firstID + 3, readWrite, "number;1;;72\tThe characters on a line"},
    {names[restoreIndex], restoreID, int(InfoType::Method),
     "undefined\tSets these back to what they were at first"},
    {nullptr, 0, 0, nullptr}};

constexpr ClassTexts settingsTexts = {.description =
                                          "Settings that the host knows, and any others.",
                                      .details = "Scripts may add properties of any name.",
                                      .sample = "var settings = new Settings();\n"
                                                "settings.decimals = 3;\n"
                                                "settings.colour = \"red\";   // a new one",
                                      .hasOtherNames = true,
                                      .members = classProperties<settingsTable>,
                                      .describesOwnNames = true};

constexpr int requests[] = {MessageID::GetID, MessageID::Get, MessageID::Put, MessageID::Call,
                            MessageID::Enumerate};

} // namespace

SettingsSource::SettingsSource() { restore(); }

void SettingsSource::restore() {
    values_[0] = "en";
    values_[1] = "EUR";
    values_[2] = 2;
    values_[3] = 72;
}

void SettingsSource::attach(LiveObject& object) {
    for (const int request : requests)
        object.addListener(*this, request);
}

void SettingsSource::detach(LiveObject& object) { object.removeListener(*this, MessageID::All); }

bool SettingsSource::notify(Message& message) {
    auto* request = dynamic_cast<LiveMessage*>(&message);
    if (!request) return false;
    const int index = request->getPropertyID() - firstID;
    const bool isValue = index >= 0 && index < count;
    switch (message.getID()) {
    case MessageID::GetID:
        return resolve(*request);
    case MessageID::Enumerate:
        return list(*request);
    case MessageID::Call:
        return run(*request);
    case MessageID::Get:
        if (isValue) *request->getData() = values_[static_cast<unsigned>(index)];
        return isValue;
    case MessageID::Put:
        if (isValue) values_[static_cast<unsigned>(index)] = *request->getData();
        return isValue;
    default:
        return false;
    }
}

/// Finds the ID and the kind for a name; false leaves it to the next listener.
bool SettingsSource::resolve(LiveMessage& request) const {
    for (int i = 0; i <= restoreIndex; ++i) {
        if (request.getData()->getString() != names[i]) continue;
        request.getPropertyID() = firstID + i;
        const InfoType kind = i == restoreIndex ? InfoType::Method : InfoType::ReadWrite;
        *request.getData() = static_cast<int>(kind);
        return true;
    }
    return false;
}

bool SettingsSource::run(LiveMessage& request) {
    if (request.getPropertyID() != restoreID) return false;
    restore();
    request.getError() = ErrorCode::Ok;
    return true;
}

/// Adds what the object did not list by itself. A property that nobody has asked for yet is not
/// known to the object; asking for its name makes it known, so that the ID has a name.
bool SettingsSource::list(LiveMessage& request) const {
    for (int i = 0; i < count; ++i) {
        int id = 0;
        InfoType kind = InfoType::Unknown;
        request.getThis()->getIDForName(names[i], id, kind, request.getLanguage());
        if (id != 0 && request.getEnumIDs()->indexOf(id) < 0) request.getEnumIDs()->append(id);
    }
    return true;
}

Settings::Settings() : LiveObject("Settings", true) { source_.attach(*this); }

Settings::~Settings() { source_.detach(*this); }

const ClassInfo* Settings::getClassInfo(int flags) const {
    return HostClassInfo::describe(*this, flags, settingsTexts);
}

int Settings::clone(LiveObject** result, bool deep) const {
    const auto copy = InterfacePtr<Settings>::adopt(new Settings);
    if (const int code = cloneContent(*copy, deep); code != ErrorCode::Ok) {
        *result = nullptr;
        return code;
    }
    copy->addRef();
    *result = copy.get();
    return ErrorCode::Ok;
}

} // namespace krhost
