#pragma once

#include <krcore/containers/SimpleArray.h>
#include <krcore/live/ClassInfo.h>
#include <krcore/text/String.h>

namespace krhost {

/// The names that `ClassInfo::enumerateNames` gives, deleted with the list.
class NameList {
public:
    NameList() = default;
    NameList(const KrCore::ClassInfo& info, int flags) : NameList() {
        info.enumerateNames(words(), flags);
    }
    NameList(const NameList&) = delete;
    NameList& operator=(const NameList&) = delete;
    ~NameList() {
        for (int i = 0; i < length(); ++i)
            delete at(i);
    }

    KrCore::SimpleArray& words() { return words_; }
    int length() const { return words_.length(); }
    const KrCore::String& operator[](int index) const { return *at(index); }
    /// Moves a name into another such list.
    void moveTo(KrCore::SimpleArray& names, int index) {
        names.append(words_.getData()[index]);
        words_[index] = 0;
    }

private:
    KrCore::String* at(int index) const {
        return reinterpret_cast<KrCore::String*>(words_.getData()[index]);
    }

    KrCore::SimpleArray words_;
};

} // namespace krhost
