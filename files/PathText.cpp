#include "files/PathText.h"

#include <algorithm>

namespace KrCore::PathText {

namespace {

constexpr char verbatimServer[] = "\\\\?\\UNC\\";
constexpr int verbatimServerLength = 8;
constexpr char verbatim[] = "\\\\?\\";
constexpr int verbatimLength = 4;
constexpr int suffixLength = 4;
constexpr int driveRootLength = 3;

bool isVerbatim(const String& path) { return path.ncmp(verbatim, verbatimLength) == 0; }

/// The end of the segment that begins at `start`.
int segmentEnd(const String& path, int start) {
    const unsigned short* end = std::find_if(path.begin() + start, path.end(), isSeparator);
    return static_cast<int>(end - path.begin());
}

/// Behind a server's name and its share, which begin at `start`.
int shareEnd(const String& path, int start) {
    const int server = segmentEnd(path, start);
    return server == path.length() ? server : segmentEnd(path, server + 1);
}

int driveRootEnd(const String& path, int start) {
    if (!hasDrive(path.begin() + start, path.length() - start)) return start;
    return std::min(start + driveRootLength, path.length());
}

int lastSeparator(const String& path) { return path.find('\\', -1, true); }

/// Puts the segments of a path together again.
class Folding {
public:
    Folding(const String& path, int rootEnd) : isAbsolute_(rootEnd > 0), result_(path) {
        result_.adjust(rootEnd);
        result_.replaceAll('/', '\\');
        rootEnd_ = rootEnd;
    }

    void add(const unsigned short* name, int length) {
        if (length == 0 || (length == 1 && name[0] == '.')) return;
        const bool climbs = length == 2 && name[0] == '.' && name[1] == '.';
        if (climbs && depth_ > 0) {
            removeLast();
        } else if (!climbs || !isAbsolute_) {
            if (result_.length() > 0 && !isSeparator(result_.end()[-1])) result_.append('\\');
            result_.append(name, length);
            depth_ += climbs ? 0 : 1;
        }
    }
    const String& result() const { return result_; }

private:
    void removeLast() {
        result_.adjust(std::max(lastSeparator(result_), rootEnd_));
        --depth_;
    }

    const bool isAbsolute_;
    String result_;
    int rootEnd_ = 0;
    int depth_ = 0; ///< Names that a ".." can take back.
};

} // namespace

bool hasDrive(const unsigned short* path, int length) {
    return length >= 2 && isLetter(path[0]) && path[1] == ':' &&
           (length == 2 || isSeparator(path[2]));
}

int rootLength(const String& path) {
    if (path.nucmp(verbatimServer, verbatimServerLength) == 0) return verbatimServerLength;
    if (isVerbatim(path)) return driveRootEnd(path, verbatimLength);
    const int length = path.length();
    const unsigned short* units = path.wstr();
    if (length >= 2 && isSeparator(units[0]) && isSeparator(units[1])) return 2;
    return length >= 1 && isSeparator(units[0]) ? 1 : driveRootEnd(path, 0);
}

String withBackslashes(const String& path) {
    String result(path);
    if (!isVerbatim(path)) result.replaceAll('/', '\\');
    return result;
}

String join(const String& folder, const String& name) {
    if (folder.isEmpty()) return name;
    return isSeparator(folder.end()[-1]) ? folder + name : folder + '\\' + name;
}

String folded(const String& path) {
    const int rootEnd = rootLength(path);
    Folding folding(path, rootEnd);
    for (int start = rootEnd; start < path.length();) {
        const int end = segmentEnd(path, start);
        folding.add(path.begin() + start, end - start);
        start = end + 1;
    }
    String result(folding.result());
    if (rootEnd > 0 && hasDrive(result.begin(), result.length()) && result.length() == 2)
        result.append('\\');
    return result;
}

String resolved(const String& path, const String& folder) {
    return folded(isAbsolute(path) ? path : join(folder, path));
}

String lastName(const String& path) { return path.substr(lastSeparator(path) + 1); }

String nameOf(const String& path) {
    String name = lastName(path);
    return hasShortcutSuffix(name) ? name.substr(0, name.length() - suffixLength) : name;
}

String extensionOf(const String& path) {
    const String name = nameOf(path);
    const int point = name.find('.', -1, true);
    return point < 0 ? String() : name.substr(point + 1);
}

String parentOf(const String& path) {
    const bool isDriveRoot =
        path.length() == driveRootLength && path.wstr()[1] == ':' && path.wstr()[2] == '\\';
    if (isDriveRoot || path == "/") return {};
    const int separator = lastSeparator(path);
    if (separator < 0) return path;
    String parent = path.substr(0, separator);
    if (parent.length() == 2 && parent.wstr()[1] == ':') parent.append('\\');
    return parent;
}

String rootNameOf(const String& path) {
    const int length = rootLength(path);
    const bool isServer = length == 2 && isSeparator(path.wstr()[1]);
    if (isServer || length == verbatimServerLength) return path.substr(0, shareEnd(path, length));
    String root = path.substr(0, length);
    if (root.length() > 1 && isSeparator(root.end()[-1])) root.adjust(root.length() - 1);
    return root;
}

bool hasShortcutSuffix(const String& path) {
    const int start = path.length() - suffixLength;
    return start > 0 && path.substr(start).ucmp(shortcutSuffix) == 0;
}

} // namespace KrCore::PathText
