#include "schemareview/memberreview.h"

#include "CBGenerator/storabletext.h"
#include "CBGenerator/structsetting.h"
#include "HEXGeneratorParser/hexutility.h"
#include "base/countedtext.h"
#include "base/quotedtext.h"
#include "schemareview/memberform.h"
#include "schemareview/mendedline.h"
#include "schemareview/nearestword.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

using HEXGeneratorParser::HexUtility;

namespace HParser
{
namespace
{
constexpr int listPlace = 5;
constexpr int firstItem = 6;

const QString basicLevel = QStringLiteral("basic");

bool isQuoted(const QString& text)
{
    return text.size() >= 2 && text.startsWith(QLatin1Char('"')) && text.endsWith(QLatin1Char('"'));
}

bool isIdentifier(const QString& text)
{
    static const QRegularExpression identifier(QStringLiteral("\\A[A-Za-z_][A-Za-z0-9_]*\\z"));
    return identifier.match(text).hasMatch();
}
} // namespace

MemberReview::MemberReview(const QString& lineText, int lineNumber, Problems& problems)
    : mended(lineText, lineNumber), pieces(mended.text()), number(lineNumber), found(problems)
{
    found += mended.problems();
}

bool MemberReview::check()
{
    if (!checkParts() || !checkKind()) {
        return false;
    }
    checkName();
    checkType();
    checkSize();
    checkFields();
    return true;
}

bool MemberReview::checkParts()
{
    const QString form = QStringLiteral("TYPE NAME; // KIND, ... on one line");
    if (pieces.declaration().trimmed().startsWith(QLatin1String("//")) && !pieces.hasDescriptor()) {
        add(pieces.firstColumn(), Problem::Severity::Fatal,
            QStringLiteral("a comment line inside a struct"),
            QStringLiteral("the comment outside the struct: inside are members and blank lines"));
        return false;
    }
    if (pieces.name().text.isEmpty()) {
        add(pieces.firstColumn(), Problem::Severity::Fatal,
            QStringLiteral("a member without a type and a name"), form);
        return false;
    }
    if (!pieces.hasDescriptor()) {
        add(pieces.endColumn(), Problem::Severity::Fatal,
            QStringLiteral("a member without a description behind \";\""), form);
        return false;
    }
    return true;
}

bool MemberReview::checkKind()
{
    const MemberLine::Piece first = pieces.field(0);
    if (pieces.fields().isEmpty()) {
        add(pieces.endColumn(), Problem::Severity::Fatal, QStringLiteral("no fields behind \";\""),
            QStringLiteral("// ") + MemberForm::form(QStringLiteral("num")));
        return false;
    }
    kind = first.text;
    if (MemberForm::numberOfFields(kind) > 0) {
        return checkNumberOfFields();
    }
    if (MemberForm::numberOfFields(kind.section(QLatin1Char(' '), 0, 0)) > 0) {
        addMissingField(quotedText(kind));
        return false;
    }
    const QString nearest = nearestWord(kind, MemberForm::kinds());
    add(first.column(), Problem::Severity::Fatal,
        QStringLiteral("%1 is not a kind of setting").arg(quotedText(kind)),
        nearest.isEmpty() ? QStringLiteral("num, bool, string or list") : nearest);
    return false;
}

bool MemberReview::checkNumberOfFields()
{
    const int wanted = MemberForm::numberOfFields(kind);
    const int fields = pieces.fields().size();
    const QList<int> empty = pieces.emptyFieldColumns();
    const QString counts =
        QStringLiteral("%1 where a %2 has %3")
            .arg(countedText(fields, QStringLiteral("field"), QStringLiteral("fields")), kind,
                 QString::number(wanted));
    const bool isShifted = isList() && isQuoted(pieces.field(listPlace).text); // that is an item
    const bool isShort = fields < wanted || isShifted;
    for (const int column : empty) {
        add(column, isShort ? Problem::Severity::Fatal : Problem::Severity::Error,
            QStringLiteral("an empty field does not count, all behind it move up")
                + (isShort ? QStringLiteral(": ") + counts : QString()),
            QStringLiteral("\"\" for an empty text"));
    }
    if (isShort && empty.isEmpty()) {
        addMissingField(isShifted ? QStringLiteral("a field before the items is missing") : counts);
    }
    if (fields > wanted && !MemberForm::mayHaveMore(kind)) {
        add(pieces.field(wanted).column(), Problem::Severity::Error, counts,
            MemberForm::form(kind));
    }
    return !isShort;
}

void MemberReview::addMissingField(const QString& text)
{
    const int column = missingComma();
    if (column > 0) {
        add(column, Problem::Severity::Fatal, QStringLiteral("a comma is missing: ") + text,
            QStringLiteral("a comma here"));
    } else {
        add(pieces.endColumn(), Problem::Severity::Fatal, text, MemberForm::form(kind));
    }
}

/// The column of the blank where a comma is missing; 0 when no field looks like two.
int MemberReview::missingComma() const
{
    // Behind or before a quote, or where a number and something else meet.
    static const QRegularExpression gap(QStringLiteral(
        "(?<=\")\\s+\\S|(?<=\\S)\\s+(?=\")|[\\d.]\\s+(?=[\\w(])|[\\w)]\\s+(?=[x-]?[\\d.]+\\z)"));
    const QList<MemberLine::Piece> fields = pieces.fields();
    for (const MemberLine::Piece& piece : fields) {
        const QString& text = piece.raw;
        const bool isText = isQuoted(text) && text.count(QLatin1Char('"')) == 2;
        const QRegularExpressionMatch match = isText ? QRegularExpressionMatch() : gap.match(text);
        if (match.hasMatch()) {
            int blank = match.capturedStart();
            while (!text.at(blank).isSpace()) {
                ++blank;
            }
            return piece.columns.at(blank);
        }
    }
    const MemberLine::Piece first = pieces.field(0);
    const int blank = first.raw.indexOf(QLatin1Char(' '));
    return blank < 0 ? 0 : first.columns.at(blank);
}

void MemberReview::checkName()
{
    const MemberLine::Piece name = pieces.name();
    static const QRegularExpression brackets(QStringLiteral("\\[[\\w\\p{M}]*\\]"),
                                             QRegularExpression::UseUnicodePropertiesOption);
    isArray = name.text.contains(brackets);
    if (!isArray && pieces.declaration().contains(QLatin1Char('['))) {
        // A number's type reaches up to the last blank then and is none of the charger's.
        add(name.column(), isNum() ? Problem::Severity::Fatal : Problem::Severity::Error,
            QStringLiteral("blanks in the brackets: this is no array"),
            isNum() ? QStringLiteral("the type and the name, without brackets")
                    : QStringLiteral("name[12], without blanks"));
        return;
    }
    arraySize = isArray ? StructSetting::getNumInSquareBrackets(name.text) : 0;
    if (isArray && arraySize == 0) {
        add(name.column(), Problem::Severity::Error,
            QStringLiteral("an array without a size in digits"), QStringLiteral("name[12]"));
    }
    const QString plain = name.text.section(QLatin1Char('['), 0, 0);
    if (!isIdentifier(plain)) {
        add(name.column(), Problem::Severity::Error,
            QStringLiteral("%1 is no C name").arg(quotedText(plain)),
            QStringLiteral("letters, digits and \"_\", a letter first"));
    }
}

QString MemberReview::dataType() const
{
    const QString words = pieces.declaration().simplified();
    return words.left(words.size() - pieces.name().text.size()).simplified().toLower();
}

void MemberReview::checkType()
{
    if (!isArray && pieces.declaration().contains(QLatin1Char('['))) {
        return; // told with the name: where the type ends is not known
    }
    const int bytes = HexUtility::calculateByteCount(dataType());
    if (bytes == 0) {
        const QString nearest = nearestWord(dataType(), HexUtility::dataTypes());
        add(pieces.firstColumn(), isNum() ? Problem::Severity::Fatal : Problem::Severity::Error,
            QStringLiteral("%1 is no type of the charger").arg(quotedText(dataType())),
            nearest.isEmpty() ? QStringLiteral("char, short, int or long, signed or unsigned")
                              : nearest);
    } else if (bytes != 1 && (isBool() || isText())) {
        add(pieces.firstColumn(), Problem::Severity::Error,
            isBool() ? QStringLiteral("a bool is stored in one byte and read in %1").arg(bytes)
                     : QStringLiteral("a text is stored in single bytes"),
            isBool() ? QStringLiteral("unsigned char") : QStringLiteral("char"));
    }
    if (isText() && !isArray) {
        add(pieces.name().column(), Problem::Severity::Error,
            QStringLiteral("a text needs an array"), pieces.name().text + QStringLiteral("[12]"));
    } else if (isArray && !isText()) {
        add(pieces.name().column(), Problem::Severity::Error,
            QStringLiteral("a %1 cannot be an array").arg(kind),
            QStringLiteral("a member for each number"));
    }
}

void MemberReview::checkSize()
{
    const MemberLine::Piece size = pieces.field(1);
    if (size.text == QLatin1String("auto")) {
        return;
    }
    static const QRegularExpression digits(QStringLiteral("\\A[0-9]+\\z"));
    if (!digits.match(size.text).hasMatch()) {
        add(size.column(), Problem::Severity::Fatal,
            QStringLiteral("%1 is not a size").arg(quotedText(size.text)),
            nearestWord(size.text, {QStringLiteral("auto")}).isEmpty()
                ? QStringLiteral("auto, or a number of bits in digits")
                : QStringLiteral("auto"));
    } else if (isText()) {
        add(size.column(), Problem::Severity::Fatal, QStringLiteral("a text cannot be a bit field"),
            QStringLiteral("auto"));
    } else {
        bool fits = false;
        const int width = size.text.toInt(&fits);
        checkWidth(fits ? width : 1 << 20, size.column());
    }
}

void MemberReview::checkWidth(int width, int column)
{
    const int bits = 8 * (isBool() ? 1 : HexUtility::calculateByteCount(dataType()));
    if (width > bits && bits > 0) {
        add(column, Problem::Severity::Fatal,
            QStringLiteral("%1 bits do not fit into %2")
                .arg(pieces.field(1).text, isBool() ? QStringLiteral("a bool") : dataType()),
            QStringLiteral("%1 or less").arg(bits));
    } else if (width == 0) {
        add(column, Problem::Severity::Error, QStringLiteral("a bit field without bits"),
            QStringLiteral("1 or more"));
    }
}

void MemberReview::checkFields()
{
    checkQuoted(nameIndex(), QStringLiteral("the name"));
    if (isNum()) {
        checkQuoted(7, QStringLiteral("the units"));
        checkScaleFactor();
    }
    if (isBool() && pieces.field(4).text != QLatin1String("1")
        && pieces.field(4).text != QLatin1String("0")) {
        add(pieces.field(4).column(), Problem::Severity::Error,
            QStringLiteral("the default %1 counts as off").arg(quotedText(pieces.field(4).text)),
            QStringLiteral("1 or 0"));
    }
    if (isText()) {
        checkQuoted(4, QStringLiteral("the default"));
        checkText(StructSetting::stripOutQuotes(pieces.field(4).text), pieces.field(4).column(),
                  QStringLiteral("the default"));
    }
    if (isList()) {
        checkListItems();
    }
    checkLevel(isList() ? pieces.fields().size() - 1 : isNum() ? 11 : 6);
}

void MemberReview::checkScaleFactor()
{
    const MemberLine::Piece scale = pieces.field(4);
    const QChar first = scale.text.isEmpty() ? QChar() : scale.text.at(0);
    if (first.isDigit()) {
        add(scale.column(), Problem::Severity::Fatal,
            QStringLiteral("the first character of a scale factor is dropped"),
            QLatin1Char('x') + scale.text);
        return;
    }
    bool isNumber = false;
    const double factor = scale.text.mid(1).toDouble(&isNumber);
    if (!isNumber || !(factor > 0)) {
        add(scale.column(), Problem::Severity::Error,
            QStringLiteral("with this scale factor values cannot be read back"),
            QStringLiteral("x and a number above 0, such as x0.1"));
    }
}

void MemberReview::checkListItems()
{
    const int lastItem = pieces.fields().size() - 2;
    const MemberLine::Piece defaultItem = pieces.field(4);
    QStringList items;
    for (int i = 0; i < pieces.fields().size(); ++i) {
        items.append(pieces.field(i).text);
    }
    items = StructSetting::getList(items);
    QSet<QString> seen;
    for (int i = firstItem; i <= lastItem; ++i) {
        const MemberLine::Piece piece = pieces.field(i);
        const QString& item = items.at(i - firstItem);
        const bool isEnd = i == firstItem || i == lastItem;
        if (isEnd && item.isEmpty()) {
            add(piece.column(), Problem::Severity::Error,
                QStringLiteral("%1 becomes an empty item").arg(quotedText(piece.text)),
                QStringLiteral("letters, digits, \"_\" and blanks in quotes: the first and the "
                               "last item hold nothing else"));
        } else if (!isEnd) {
            checkQuoted(i, QStringLiteral("the item"));
        }
        checkText(item, piece.column(), QStringLiteral("the item"));
        if (seen.contains(item)) {
            add(piece.column(), Problem::Severity::Warning,
                QStringLiteral("the item %1 is there twice").arg(quotedText(item)));
        }
        seen.insert(item);
    }
    if (lastItem < firstItem) {
        add(pieces.field(firstItem).column(), Problem::Severity::Error,
            QStringLiteral("a list without items"), MemberForm::form(kind));
    } else if (!items.contains(StructSetting::stripOutQuotes(defaultItem.text))) {
        const QString nearest = nearestWord(StructSetting::stripOutQuotes(defaultItem.text), items);
        add(defaultItem.column(), Problem::Severity::Error,
            QStringLiteral("the default is none of the items"),
            QLatin1Char('"') + (nearest.isEmpty() ? items.first() : nearest) + QLatin1Char('"'));
    }
}

void MemberReview::checkText(const QString& text, int column, const QString& what)
{
    const QString characters = StorableText::unstorable(text);
    if (!characters.isEmpty()) {
        add(column, Problem::Severity::Error,
            QStringLiteral("%1 holds %2, which the charger cannot hold")
                .arg(what, quotedText(characters)),
            QStringLiteral("ASCII characters"));
    } else if (arraySize > 0 && text.size() > arraySize - 1) {
        add(column, Problem::Severity::Error,
            QStringLiteral("%1 is longer than the %2 characters of %3")
                .arg(what, QString::number(arraySize - 1), pieces.name().text),
            QStringLiteral("a shorter text, or an array of %1").arg(text.size() + 1));
    }
}

void MemberReview::checkQuoted(int index, const QString& what)
{
    const MemberLine::Piece piece = pieces.field(index);
    if (isQuoted(piece.text)) {
        return;
    }
    QString plain = piece.text;
    plain.remove(QLatin1Char('"'));
    const bool isCut = piece.text.count(QLatin1Char('"')) == 1;
    add(piece.column(), Problem::Severity::Error,
        isCut ? QStringLiteral("a quote of %1 is missing").arg(what)
              : QStringLiteral("%1 loses its first and last characters").arg(what),
        QLatin1Char('"') + plain + QLatin1Char('"'));
}

void MemberReview::checkLevel(int index)
{
    const MemberLine::Piece level = pieces.field(index);
    if (level.text != basicLevel && !nearestWord(level.text, {basicLevel}).isEmpty()) {
        add(level.column(), Problem::Severity::Warning,
            QStringLiteral("%1 makes an advanced setting").arg(quotedText(level.text)), basicLevel);
    }
}

void MemberReview::add(int column, Problem::Severity severity, const QString& text,
                       const QString& advice)
{
    found.append({number, column, severity, text, advice});
}
} // namespace HParser
