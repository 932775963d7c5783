#pragma once

#include <krcore/files/FileWrapper.h>
#include <krcore/live/LiveObject.h>
#include <krcore/live/LivePropertyInfo.h>
#include <krcore/values/Variant.h>

#include <memory>

namespace krhost {

/// What `File` and `Folder` of the scripts have in common: a place in the file system, whether or
/// not there is something, and the text of the last failure. How to expose a thing of the library
/// that reports by return values: an operation that fails is false (or null where a text or a list
/// is expected) and leaves its text in `error`; only a call that makes no sense is a script error.
///
/// ```js
/// var notes = new Folder(Folder.temp + "/my%20notes");   // paths are in URI form
/// if (!notes.create()) print(notes.error);
/// notes.parent.fsName;                                    // the path, not as a URI
/// ```
class FileEntry : public KrCore::LiveObject {
public:
    /// Each derived class goes on from `FirstOwn`.
    enum ID : int {
        Name = 1,
        FsName,
        AbsoluteURI,
        RelativeURI,
        DisplayName,
        ParentFolder,
        Exists,
        Failure,
        Remove,
        Rename,
        ToString,
        FirstOwn
    };

    int clone(KrCore::LiveObject** result, bool deep) const override;
    /// Takes the path.
    int initialize(const KrCore::Array& args, KrCore::Error* err) override;
    KrCore::InfoType getType(int id) override;
    int get(int id, KrCore::Variant& result, KrCore::Error* err) const override;
    int put(int id, const KrCore::Variant& value, KrCore::Error* err) override;
    int apply(KrCore::LiveObject& self, int id, const KrCore::Array& args, KrCore::Variant& result,
              KrCore::Error* err) const override;

    const KrCore::FileSpec& getFileSpec() const { return file_->getFileSpec(); }

protected:
    using Wrapper = std::unique_ptr<KrCore::FileWrapper>;

    static const KrCore::LivePropertyInfo commonTable[];

    explicit FileEntry(const char* className);

    virtual KrCore::InterfacePtr<FileEntry> makeAnother() const = 0;
    /// Where an object is that is made without a path.
    virtual int locateDefault(KrCore::FileSpec& place) const = 0;
    virtual bool exists() const = 0;
    virtual int read(int id, KrCore::Variant& result) const;
    virtual int write(int id, const KrCore::Variant& value);
    virtual int run(int id, const KrCore::Array& args, KrCore::Variant& result);

    KrCore::FileWrapper& file() const { return *file_; }
    static bool isGiven(const KrCore::Array& args, unsigned index);
    /// Makes `result` a `File` or `Folder` object.
    static void answer(Wrapper file, bool isFolder, KrCore::Variant& result);

private:
    int locate(const KrCore::Array& args, KrCore::FileSpec& place, KrCore::Error* err) const;

    Wrapper file_; // never null
};

} // namespace krhost
