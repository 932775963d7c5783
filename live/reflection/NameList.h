#pragma once

#include "live/PointerWord.h"

#include <krcore/containers/SimpleArray.h>
#include <krcore/containers/SparseArray.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/live/ClassInfo.h>
#include <krcore/live/InfoType.h>
#include <krcore/text/String.h>

#include <memory>

namespace KrCore {

/// Gives the caller of `ClassInfo::enumerateNames` the names of members, each once. A constructor
/// has no name of its own, and a name that leads to another member belongs to that one. `Source` is
/// a live object or a property manager.
template <class Source>
void appendNames(SimpleArray& names, const SimpleArray& ids, const Source& source, int flags) {
    SparseArray listed;
    for (long long word : ids) {
        const int id = static_cast<int>(word);
        auto name = std::make_unique<String>();
        int namedID = 0;
        InfoType kind = InfoType::Unknown;
        if (listed.hasKey(id) || source.getNameForID(id, *name, flags) != ErrorCode::Ok ||
            name->isEmpty() || source.getIDForName(*name, namedID, kind, flags) != ErrorCode::Ok ||
            namedID != id)
            continue;
        listed.set(id, 1);
        names.append(wordOf(name.get()));
        name.release();
    }
}

/// The names of a class's members, deleted with the list.
class NameList {
public:
    NameList() = default;
    NameList(const NameList&) = delete;
    NameList& operator=(const NameList&) = delete;
    ~NameList() {
        for (long long word : words_)
            delete pointerOf<String>(word);
    }

    void fill(const ClassInfo& info, int flags) { info.enumerateNames(words_, flags); }
    int length() const { return words_.length(); }
    const String& operator[](int index) const {
        return *pointerOf<String>(words_.getData()[index]);
    }

private:
    SimpleArray words_;
};

} // namespace KrCore
