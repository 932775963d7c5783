#pragma once

#include "hosts/FileEntry.h"

namespace krhost {

/// A file for scripts, who know it as `File`: how to expose a thing that is opened and closed.
///
/// ```js
/// var notes = new File("notes.txt");
/// notes.encoding = "UTF-16LE";              // else found out from the first bytes
/// if (!notes.open("r")) print(notes.error);
/// for (var line; (line = notes.readln()) !== null;) print(line);
/// notes.close();
/// ```
///
/// An object that the script lets go of closes its file; what could not be written then is lost.
class FileObject : public FileEntry {
public:
    FileObject();

    const KrCore::ClassInfo* getClassInfo(int flags) const override;

protected:
    KrCore::InterfacePtr<FileEntry> makeAnother() const override;
    int locateDefault(KrCore::FileSpec& place) const override;
    bool exists() const override;
    int read(int id, KrCore::Variant& result) const override;
    int write(int id, const KrCore::Variant& value) override;
    int run(int id, const KrCore::Array& args, KrCore::Variant& result) override;

private:
    int transfer(int id, const KrCore::Array& args, KrCore::Variant& result);
    bool readAttribute(int attribute) const;
    void writeAttribute(int attribute, bool isSet);
    int setLineFeed(const KrCore::String& name);
    int readText(const KrCore::Array& args, KrCore::Variant& result);
    void readLine(KrCore::Variant& result);
    void readCharacter(KrCore::Variant& result);
    bool writeText(const KrCore::Array& args, bool appendLineEnd);
    int seek(const KrCore::Array& args, KrCore::Variant& result);
};

} // namespace krhost
