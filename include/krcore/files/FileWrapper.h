#pragma once

#include <krcore/containers/TSimpleArray.h>
#include <krcore/files/FileSpec.h>
#include <krcore/foundation/Cloneable.h>
#include <krcore/foundation/Export.h>

namespace KrCore {

class File;
class Folder;

/// A file or folder as scripts see it: every operation answers whether it went well, and
/// `getError` says in the user's language why not. A success empties the message, of a getter that
/// asks the system too.
///
/// It works on a `File` or `Folder` of its own, made when first needed. An encoding and line
/// ends that were set are the wrapper's for good; an encoding that was found out is that file's.
/// Paths are in URI form where nothing else is said. One object is used by one thread at a time.
class KR_API FileWrapper : public Cloneable {
public:
    explicit FileWrapper(const FileSpec& spec);
    /// As `FileSpec(path)`.
    explicit FileWrapper(const String& path);
    FileWrapper(const FileWrapper&) = delete;
    FileWrapper& operator=(const FileWrapper&) = delete;
    ~FileWrapper() override;

    /// A wrapper of the same location with the same encoding and line ends; it is not open and has
    /// no error. `deep` makes no difference.
    int clone(Cloneable** result, bool deep) const override;

    /// @name The open file; see `File`
    /// @{
    /// `type` and `creator`, which may be null, are codes of four characters.
    bool open(const String& mode, const String* type, const String* creator);
    bool close();
    bool read(long long count, String& text);
    bool readln(String& line);
    /// The next character, or -1 at the end and after a failure.
    int readch();
    bool write(const String& text, bool appendLineEnd);
    bool seek(long long position, int whence);
    long long tell();
    bool eof();
    bool flush();
    long long getSize(); ///< -1 after a failure.
    bool setSize(long long byteCount);
    bool isOpen() const;
    String getEncoding() const;
    bool setEncoding(const String& name);
    /// A `CRLFEncoding`; other values are refused.
    int getLF() const;
    bool setLF(int lineEnd);
    /// @}

    /// The message of the last operation; empty after a success.
    const String& getError() const;
    bool setError(const String& message);

    /// @name The file or folder
    /// @{
    /// Copies a file to `target`, or into it when that is a folder.
    bool copy(const String& target);
    /// Gives it another name where it is: a plain name, no path. An open file is closed.
    bool rename(const String& name);
    /// Removes the file or the empty folder. An open file is closed.
    bool remove();
    bool makeDir();
    bool execute();
    bool createAlias(const String& target, bool isNative);
    /// As `FileSpec::changePath`. An open file is closed.
    bool changePath(const String& uri);
    /// Appends a new wrapper, which is the caller's to delete, for each file and folder that fits
    /// the mask (`FileFilter`; null for all).
    bool getFiles(TSimpleArray<FileWrapper>& files, const String* mask);
    /// @}

    /// @name The location; see `FileSpec`
    /// @{
    const FileSpec& getFileSpec() const;
    String getPath() const;
    String getAbsoluteURI(bool useHome) const;
    String getRelativeURI() const;
    String getResolvedPath() const;
    String getDisplayName() const;
    /// Four characters; empty when there is no such code.
    String getType() const;
    String getCreator() const;
    bool getAttributes(int* attributes, int* settable);
    bool setAttributes(int attributes);
    /// @}

    /// @name Folders that programs know
    /// New wrappers, which are the caller's to delete. When there is no such folder the wrapper has
    /// an empty path and the message.
    /// @{
    static FileWrapper* getCurrentDir();
    static FileWrapper* getStartupDir();
    static FileWrapper* getSystemDir();
    static FileWrapper* getTempDir();
    static FileWrapper* getTrashDir();
    static FileWrapper* getSpecialDir(int kind);
    /// The message goes into `folder`.
    static bool setCurrentDir(FileWrapper& folder);
    /// @}

    static String getFileSystem();
    /// A `CRLFEncoding`.
    static int getSystemLF();
    /// Percent-encodes as paths in URI form are, and decodes. False, with an empty result, for what
    /// cannot be converted.
    static bool encode(const String& text, String& result);
    static bool decode(const String& text, String& result);

private:
    File& toFile();
    Folder& toFolder();
    void drop();
    template <class Change>
    bool closeAround(Change change);
    bool checkError(int code);

    FileSpec spec_;
    File* file_ = nullptr;     ///< Owned; null until needed.
    Folder* folder_ = nullptr; ///< Owned; null until needed.
    String error_;
    String encoding_; ///< The one that was set; empty when each file's own is to be found out.
    int lineEnd_ = 0;
};

} // namespace KrCore
