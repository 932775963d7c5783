#include "files/PathUri.h"

#include "files/PathText.h"

#include <algorithm>

namespace KrCore::PathUri {

namespace {

constexpr char scheme[] = "file://";
constexpr int schemeLength = 7;

bool isPlainSeparator(unsigned short unit) { return unit == '\\'; }

unsigned short lowerLetter(unsigned short unit) {
    return unit >= 'A' && unit <= 'Z' ? static_cast<unsigned short>(unit | 0x20) : unit;
}

unsigned short upperLetter(unsigned short unit) {
    return unit >= 'a' && unit <= 'z' ? static_cast<unsigned short>(unit & ~0x20) : unit;
}

void removeVerbatimPrefix(String& path) {
    if (path.nucmp("\\\\?\\UNC\\", 8) == 0) {
        path = String("\\\\") + path.substr(8);
    } else if (path.ncmp("\\\\?\\", 4) == 0) {
        path = path.substr(4);
    }
}

/// A folder beside the home folder may begin with the same letters; it stays.
bool isWithin(const String& path, const String& home) {
    if (home.isEmpty() || path.nucmp(home, home.length()) != 0 || path.length() < home.length())
        return false;
    return path.length() == home.length() || isPlainSeparator(home.end()[-1]) ||
           isPlainSeparator(path.begin()[home.length()]);
}

void putHomeSign(String& path, int homeLength) {
    const String rest = path.substr(homeLength);
    const bool needsSeparator = rest.isEmpty() || !isPlainSeparator(rest.wstr()[0]);
    path = needsSeparator ? String("~\\") + rest : String("~") + rest;
}

void putDriveSegment(String& path) {
    if (path.length() < 3 || path.wstr()[1] != ':') return;
    const unsigned short drive = lowerLetter(path.wstr()[0]);
    const bool isDrive = drive != '\\' && drive != '~';
    path.set(0, isDrive ? static_cast<unsigned short>('/') : drive);
    if (isDrive) path.set(1, drive);
}

void removeEnd(String& path) {
    if (PathText::hasShortcutSuffix(path)) path.adjust(path.length() - 4);
    int length = path.length();
    while (length > 1 && path.wstr()[length - 1] == '/')
        --length;
    path.adjust(length);
}

/// The platform path of a URI while its segments arrive.
class PathBuilder {
public:
    explicit PathBuilder(const String& root) : path_(root) {}

    /// False when the name cannot be one.
    bool add(String name) {
        if (name.find('%') >= 0) {
            name.decodeURI();
            if (std::any_of(name.begin(), name.end(), isImpossible)) return false;
        }
        if (!path_.isEmpty() && !isPlainSeparator(path_.end()[-1])) path_.append('\\');
        path_.append(name);
        return true;
    }
    String folded() const { return PathText::folded(path_); }

private:
    static bool isImpossible(unsigned short unit) {
        return unit == 0 || PathText::isSeparator(unit);
    }

    String path_;
};

bool isEndOrSeparator(const String& text, int index) {
    return index >= text.length() || PathText::isSeparator(text.wstr()[index]);
}

/// A URI without its scheme. Of "file:///" the last "/" belongs to it when what follows is absolute
/// by itself.
String withoutScheme(const String& uri) {
    if (uri.nucmp(scheme, schemeLength) != 0) return uri;
    String rest = uri.substr(schemeLength);
    if (rest.isEmpty() || rest.wstr()[0] != '/') return rest;
    const String inner = rest.substr(1);
    const bool isHome = !inner.isEmpty() && inner.wstr()[0] == '~' && isEndOrSeparator(inner, 1);
    return isHome || PathText::hasDrive(inner.wstr(), inner.length()) ? inner : rest;
}

/// The platform form of what the text begins with, and where its segments begin.
String rootOf(const String& text, const String& currentFolder, const String& home, int& start) {
    const unsigned short* units = text.wstr();
    start = 1;
    if (units[0] == '~' && isEndOrSeparator(text, 1)) return home;
    if (PathText::hasDrive(units, text.length())) {
        start = 2;
        const unsigned short drive[] = {upperLetter(units[0]), ':', '\\'};
        return {drive, 3};
    }
    if (!PathText::isSeparator(units[0])) {
        start = 0;
        return currentFolder;
    }
    if (text.length() > 1 && PathText::isSeparator(units[1])) {
        start = 2;
        return "\\\\";
    }
    if (text.length() > 1 && PathText::isLetter(units[1]) && isEndOrSeparator(text, 2)) {
        start = 2;
        const unsigned short drive[] = {upperLetter(units[1]), ':', '\\'};
        return {drive, 3};
    }
    return "\\";
}

/// Whether a relative URI would be read as the home folder or a drive.
bool looksAbsolute(const String& uri) {
    return (uri.wstr()[0] == '~' && isEndOrSeparator(uri, 1)) ||
           PathText::hasDrive(uri.wstr(), uri.length());
}

/// A URI without its leading "/", segment by segment.
class Segments {
public:
    explicit Segments(const String& uri) : uri_(&uri), next_(startsWithSlash(uri) ? 1 : 0) {}

    bool isAtEnd() const { return next_ > uri_->length(); }
    String take() {
        int end = uri_->find('/', next_);
        if (end < 0) end = uri_->length();
        String segment = uri_->substr(next_, end - next_);
        next_ = end + 1;
        return segment;
    }

private:
    static bool startsWithSlash(const String& uri) {
        return !uri.isEmpty() && uri.wstr()[0] == '/';
    }

    const String* uri_;
    int next_;
};

} // namespace

String fromPath(const String& path, const String* home) {
    String uri(path);
    removeVerbatimPrefix(uri);
    if (home && isWithin(uri, *home)) putHomeSign(uri, home->length());
    putDriveSegment(uri);
    uri.replaceAll('\\', '/');
    removeEnd(uri);
    return uri.encodeURI(keptUnits) ? uri : String();
}

bool toPath(const String& uri, const String& currentFolder, const String& home, String& path) {
    const String text = withoutScheme(uri);
    if (text.isEmpty()) {
        path.erase();
        return true;
    }
    const bool isAtHome = text.wstr()[0] == '~' && isEndOrSeparator(text, 1);
    if (isAtHome && home.isEmpty()) return false;
    int start = 0;
    PathBuilder builder(rootOf(text, currentFolder, home, start));
    while (start < text.length()) {
        const unsigned short* end =
            std::find_if(text.begin() + start, text.end(), PathText::isSeparator);
        const int length = static_cast<int>(end - text.begin()) - start;
        const String name = text.substr(start, length);
        if (name.find(static_cast<unsigned short>(0)) >= 0 || !builder.add(name)) return false;
        start += length + 1;
    }
    path = builder.folded();
    return true;
}

String relative(const String& target, const String& base) {
    String targetUri = fromPath(target, nullptr);
    const String baseUri = fromPath(base, nullptr);
    const bool isNowhere = targetUri.isEmpty() && (!target.isEmpty() || !base.isEmpty());
    if (isNowhere) return {};
    if (baseUri.isEmpty() != base.isEmpty()) return targetUri;
    Segments targetRest(targetUri);
    Segments baseRest(baseUri);
    bool sharesAny = false;
    while (!targetRest.isAtEnd() && !baseRest.isAtEnd()) {
        Segments targetNext = targetRest;
        Segments baseNext = baseRest;
        if (targetNext.take() != baseNext.take()) break;
        targetRest = targetNext;
        baseRest = baseNext;
        sharesAny = true;
    }
    String result;
    for (; sharesAny && !baseRest.isAtEnd(); baseRest.take())
        result += result.isEmpty() ? ".." : "/..";
    while (!targetRest.isAtEnd()) {
        if (!result.isEmpty() || !sharesAny) result += '/';
        result += targetRest.take();
    }
    if (result.isEmpty()) return ".";
    return looksAbsolute(result) ? String("./") + result : result;
}

} // namespace KrCore::PathUri
