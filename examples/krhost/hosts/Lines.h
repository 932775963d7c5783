#pragma once

#include <krcore/live/LiveCollection.h>

namespace krhost {

class Document;

/// The lines of a document as elements: how to show scripts a thing of the host's as a collection
/// that keeps nothing itself. A component (in `Lines.cpp`) reads and writes the document's lines;
/// it also adds a method. Whoever holds the lines keeps the document.
///
/// ```js
/// doc.lines[0] = "a better first line";
/// doc.lines[doc.lines.length] = "one more";   // further away is error 41
/// delete doc.lines[0];                        // those behind it move up
/// ```
class Lines : public KrCore::LiveCollection {
public:
    /// Lines of no document, which are only good for being described.
    Lines();
    explicit Lines(Document& document);

    int clone(KrCore::LiveObject** result, bool deep) const override;
    const KrCore::ClassInfo* getClassInfo(int flags) const override;

private:
    explicit Lines(Document* document);
};

} // namespace krhost
