#pragma once

#include "hosts/FileEntry.h"

namespace krhost {

/// A folder for scripts, who know it as `Folder`.
///
/// ```js
/// var folder = new Folder();                          // the current one
/// folder.getFiles("*.txt;*.md").forEach(function (entry) {
///     print(entry instanceof Folder, entry.name);
/// });
/// Folder.current = folder.parent;                     // also: temp, startup, desktop, userData
/// ```
class FolderObject : public FileEntry {
public:
    FolderObject();

    const KrCore::ClassInfo* getClassInfo(int flags) const override;

    /// The folders that every program knows, as properties of the class: IDs are the kinds of
    /// `KrCore::FileUtils::getSpecialDir`, and this one for the current folder.
    static constexpr int currentKind = 100;
    static const KrCore::LivePropertyInfo specialFolders[];
    /// Such a folder as an object. One that the system does not have is an empty path with the
    /// reason in `error`.
    static void findSpecial(int kind, KrCore::Variant& result);
    /// Makes a folder the current one, given as an object or as a path. Returns an error code.
    static int setCurrent(const KrCore::Variant& folder);

protected:
    KrCore::InterfacePtr<FileEntry> makeAnother() const override;
    int locateDefault(KrCore::FileSpec& place) const override;
    bool exists() const override;
    int run(int id, const KrCore::Array& args, KrCore::Variant& result) override;

private:
    void listFiles(const KrCore::Array& args, KrCore::Variant& result);
};

} // namespace krhost
