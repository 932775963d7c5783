#pragma once

#include "live/PointerWord.h"

#include <krcore/containers/SimpleArray.h>
#include <krcore/live/ClassInfo.h>
#include <krcore/text/String.h>

#include <memory>

namespace KrCore {

/// Adds a name to what `ClassInfo::enumerateNames` gives its caller.
inline void appendName(SimpleArray& names, const String& name) {
    auto copy = std::make_unique<String>(name);
    names.append(wordOf(copy.get()));
    copy.release();
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
