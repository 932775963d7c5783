#include "Searcher.h"

#include <QRegularExpression>

namespace {

class QtSearcher : public Searcher {
public:
    explicit QtSearcher(const SearchCase& search)
        : text_(QString::fromStdU16String(search.text)),
          expression_(QString::fromUtf16(search.pattern), optionsOf(search)) {
        expression_.optimize();
    }

    int countMatches() override {
        return ::countMatches(static_cast<int>(text_.size()), [this](int position, int& end) {
            // Else every match would look through the rest of the text for broken units first.
            const QRegularExpressionMatch match =
                expression_.match(text_, position, QRegularExpression::NormalMatch,
                                  QRegularExpression::DontCheckSubjectStringMatchOption);
            if (!match.hasMatch()) return Found::Nothing;
            end = static_cast<int>(match.capturedEnd());
            return match.capturedLength() > 0 ? Found::Units : Found::Empty;
        });
    }

private:
    static QRegularExpression::PatternOptions optionsOf(const SearchCase& search) {
        QRegularExpression::PatternOptions options;
        options.setFlag(QRegularExpression::CaseInsensitiveOption, search.ignoreCase);
        options.setFlag(QRegularExpression::MultilineOption, search.multiLine);
        return options;
    }

    QString text_;
    QRegularExpression expression_;
};

} // namespace

std::unique_ptr<Searcher> makeQtSearcher(const SearchCase& search) {
    return std::make_unique<QtSearcher>(search);
}
