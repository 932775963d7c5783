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

    /// A folder that every program knows, as an object: a kind of
    /// `KrCore::FileUtils::getSpecialDir`, or 0 for the current folder. One that the system does
    /// not have is an empty path with the reason in `error`.
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
