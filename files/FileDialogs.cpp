// Locations that the user chooses.

#include "platform/FileDialogs.h"

#include "files/FileSpecData.h"
#include "files/SystemText.h"

#include <krcore/containers/Array.h>
#include <krcore/files/FileFilter.h>
#include <krcore/foundation/Callbacks.h>
#include <krcore/foundation/InitTerm.h>
#include <krcore/foundation/Version.h>

namespace KrCore {

namespace {

/// The first path that was chosen, and all of them as values.
class Choice final : public Platform::TextSink {
public:
    explicit Choice(Array* files) : files_(files) {}

    void take(std::span<const unsigned short> units) override {
        FileSpec file;
        FileSpecData::assign(file, String(units.data(), static_cast<int>(units.size())));
        if (!isMade()) first_ = file;
        if (files_) *files_ += file;
    }
    const FileSpec& first() const { return first_; }
    bool isMade() const { return !first_.getPath().isEmpty(); }

private:
    FileSpec first_;
    Array* const files_;
};

bool mayShowDialogs() {
    bool isAllowed = false;
    const Callbacks* host = Callbacks::get();
    return host && host->mayShowDialogs(isAllowed) ? isAllowed : InitTerm::isUIEnabled();
}

/// Stands around a dialog: the host may want to disable its windows.
class ModalScope {
public:
    ModalScope() : host_(Callbacks::get()) {
        if (host_) host_->modalDialog(true);
    }
    ~ModalScope() {
        if (host_) host_->modalDialog(false);
    }
    ModalScope(const ModalScope&) = delete;
    ModalScope& operator=(const ModalScope&) = delete;

    void* owner() const {
        void* window = nullptr;
        return host_ && host_->getMainWindow(window) ? window : KrGetTopWindow();
    }

private:
    Callbacks* const host_;
};

/// The system takes a blank for a part of the mask.
String strippedMasks(String rest) {
    String masks;
    while (!rest.isEmpty()) {
        if (!masks.isEmpty()) masks += ';';
        String mask = rest.split(';');
        mask.strip();
        masks += mask;
    }
    return masks;
}

/// Asks for files. The texts live as long as the dialog does.
bool chooseFiles(Platform::FileDialog dialog, const String& prompt, const String* initial,
                 const FileFilter* filter, Choice& choice) {
    if (!mayShowDialogs()) return false;
    const FileSpec folder(initial ? *initial : String());
    const String folderPath = systemPathOf(folder);
    const String masks = filter ? strippedMasks(filter->getMasks()) : String();
    const ModalScope scope;
    const Platform::FileDialogTexts texts{unitsOf(prompt), unitsOf(folderPath), unitsOf(masks),
                                          scope.owner()};
    return Platform::chooseFiles(dialog, texts, choice) && choice.isMade();
}

} // namespace

bool FileSpec::chooseFile(const String& prompt, bool multiple, const String* initial,
                          FileFilter* filter, Array* files) {
    Choice choice(multiple ? files : nullptr);
    const auto dialog = multiple ? Platform::FileDialog::OpenMany : Platform::FileDialog::Open;
    if (!chooseFiles(dialog, prompt, initial, filter, choice)) return false;
    *this = choice.first();
    return true;
}

bool FileSpec::chooseSaveFile(const String& prompt, const String* initial, FileFilter* filter) {
    Choice choice(nullptr);
    if (!chooseFiles(Platform::FileDialog::Save, prompt, initial, filter, choice)) return false;
    *this = choice.first();
    return true;
}

bool FileSpec::chooseFolder(const String& prompt) {
    if (!mayShowDialogs()) return false;
    Choice choice(nullptr);
    const ModalScope scope;
    const Platform::FileDialogTexts texts{unitsOf(prompt), {}, {}, scope.owner()};
    if (!Platform::chooseFolder(texts, choice) || !choice.isMade()) return false;
    *this = choice.first();
    return true;
}

} // namespace KrCore
