#include "Tallyglass/Desktop/Version.h"

#include <algorithm>

namespace tallyglass {

namespace {

bool isDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

/// The runs of digits and of letters, one after the other.
class Runs {
public:
    explicit Runs(QStringView version) : m_rest(version.first(std::min(length(version), version.size()))) {}

    /// The next run, a number without leading zeros; empty at the end and for a zero.
    QStringView next(bool& isNumber) {
        const auto isPart = [](QChar character) { return isDigit(character) || character.isLetter(); };
        const auto start = std::find_if(m_rest.begin(), m_rest.end(), isPart);
        isNumber = start == m_rest.end() || isDigit(*start);
        const auto end = std::find_if_not(start, m_rest.end(), [isNumber](QChar character) {
            return isNumber ? isDigit(character) : character.isLetter();
        });
        const auto first =
            isNumber ? std::find_if(start, end, [](QChar digit) { return digit != u'0'; }) : start;
        m_rest = QStringView(end, m_rest.end());
        return QStringView(first, end);
    }
    [[nodiscard]] bool atEnd() const { return m_rest.isEmpty(); }

private:
    static qsizetype length(QStringView version) {
        const qsizetype plus = version.indexOf(u'+');
        return plus < 0 ? version.size() : plus;
    }

    QStringView m_rest;
};

} // namespace

std::weak_ordering compareVersions(QStringView one, QStringView other) {
    Runs left(one);
    Runs right(other);
    while (!left.atEnd() || !right.atEnd()) {
        bool leftIsNumber = false;
        bool rightIsNumber = false;
        const QStringView a = left.next(leftIsNumber);
        const QStringView b = right.next(rightIsNumber);
        if (leftIsNumber != rightIsNumber)
            return leftIsNumber ? std::weak_ordering::greater : std::weak_ordering::less;
        if (leftIsNumber && a.size() != b.size())
            return a.size() <=> b.size();
        if (const int order = a.compare(b, Qt::CaseInsensitive); order != 0)
            return order <=> 0;
    }
    return std::weak_ordering::equivalent;
}

} // namespace tallyglass
