#include "schemareview/memberreview.h"

#include "CBGenerator/storabletext.h"
#include "CBGenerator/structlayout.h"
#include "CBGenerator/structsetting.h"
#include "base/quotedtext.h"
#include "schemareview/nearestword.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace HParser
{
namespace
{
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

StructSetting* MemberReview::check(QObject* parent)
{
    if (!checkParts() || !checkKind() || !checkNumberOfFields()) {
        return nullptr;
    }
    setting = new StructSetting(pieces, parent);
    checkName();
    checkType();
    checkSize();
    checkFields();
    return setting;
}

bool MemberReview::checkParts()
{
    const QString form = QStringLiteral("TYPE NAME; // KIND, ... on one line");
    switch (pieces.fault()) {
    case MemberLine::Fault::None:
    case MemberLine::Fault::TooFewFields:
        return true;
    case MemberLine::Fault::NoDeclaration:
    case MemberLine::Fault::NoName:
        add(pieces.firstColumn(), Problem::Severity::Fatal,
            QStringLiteral("a member without a type and a name"), form);
        break;
    case MemberLine::Fault::NoDescriptor:
        if (pieces.declaration().trimmed().startsWith(QLatin1String("//"))) {
            add(pieces.firstColumn(), Problem::Severity::Fatal,
                QStringLiteral("a comment line inside a struct"),
                QStringLiteral(
                    "the comment outside the struct: inside are members and blank lines"));
        } else {
            add(pieces.endColumn(), Problem::Severity::Fatal,
                QStringLiteral("a member without a description after \";\""), form);
        }
        break;
    case MemberLine::Fault::NoFields:
        add(pieces.endColumn(), Problem::Severity::Fatal, QStringLiteral("no fields after \";\""),
            QStringLiteral("// ") + MemberFields::all().first().form);
        break;
    }
    return false;
}

bool MemberReview::checkKind()
{
    const MemberLine::Piece first = pieces.field(0);
    if (pieces.kind() != nullptr) {
        return true;
    }
    if (MemberFields::of(first.text.section(QLatin1Char(' '), 0, 0)) != nullptr) {
        addMissingField(quotedText(first.text));
        return false;
    }
    const QString nearest = nearestWord(first.text, MemberFields::keywords());
    add(first.column(), Problem::Severity::Fatal,
        QStringLiteral("%1 is not a kind of setting").arg(quotedText(first.text)),
        nearest.isEmpty() ? QStringLiteral("num, bool, string or list") : nearest);
    return false;
}

bool MemberReview::checkNumberOfFields()
{
    const MemberFields& kind = *pieces.kind();
    const QList<int> empty = pieces.emptyFieldColumns();
    const QString counts = MendedLine::fieldCounts(pieces);
    const bool isShifted =
        kind.hasItems()
        && isQuoted(pieces.text(MemberField::Place)); // the position that is an item
    const bool isShort = pieces.fault() == MemberLine::Fault::TooFewFields || isShifted;
    for (const int column : empty) {
        add(column, isShort ? Problem::Severity::Fatal : Problem::Severity::Error,
            QStringLiteral("an empty field is skipped, all fields after it move up")
                + (isShort ? QStringLiteral(": ") + counts : QString()),
            QStringLiteral("\"\" for an empty text"));
    }
    if (isShort && empty.isEmpty()) {
        addMissingField(isShifted ? QStringLiteral("a field before the items is missing") : counts);
    }
    if (pieces.fields().size() > kind.fewest() && !kind.hasItems()) {
        add(pieces.field(kind.fewest()).column(), Problem::Severity::Error, counts, kind.form);
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
        const MemberFields* kind =
            MemberFields::of(pieces.field(0).text.section(QLatin1Char(' '), 0, 0));
        add(pieces.endColumn(), Problem::Severity::Fatal, text, kind->form);
    }
}

/// Returns the column of the blank where a comma is missing; 0 if no field looks like two.
int MemberReview::missingComma() const
{
    // After or before a quote, or between a number and something else.
    static const QRegularExpression gap(QStringLiteral(
        "(?<=\")\\s+\\S|(?<=\\S)\\s+(?=\")|[\\d.]\\s+(?=[\\w(])|[\\w)]\\s+(?=[x-]?[\\d.]+\\z)"));
    for (const MemberLine::Piece& piece : pieces.fields()) {
        const QString& text = piece.raw;
        const bool isText = isQuoted(text) && text.count(QLatin1Char('"')) == 2;
        const QRegularExpressionMatch match = isText ? QRegularExpressionMatch() : gap.match(text);
        if (match.hasMatch()) {
            int blank = match.capturedStart();
            while (!text.at(blank).isSpace()) {
                ++blank;
            }
            return piece.column(blank);
        }
    }
    const MemberLine::Piece first = pieces.field(0);
    const int blank = first.raw.indexOf(QLatin1Char(' '));
    return blank < 0 ? 0 : first.column(blank);
}

bool MemberReview::isBroken() const
{
    return !setting->isArray && pieces.declaration().contains(QLatin1Char('['));
}

bool MemberReview::isText() const
{
    return setting->settingType == StructSetting::STRING
           || setting->settingType == StructSetting::LIST;
}

void MemberReview::checkName()
{
    const MemberLine::Piece name = pieces.name();
    if (isBroken()) {
        // A number's type then extends to the last blank and is not a type of the charger.
        const bool isNum = setting->settingType == StructSetting::NUM;
        add(name.column(), isNum ? Problem::Severity::Fatal : Problem::Severity::Error,
            QStringLiteral("blanks in the brackets: this is not an array"),
            isNum ? QStringLiteral("the type and the name, without brackets")
                  : QStringLiteral("name[12], without blanks"));
        return;
    }
    if (setting->isArray && setting->arraySize == 0) {
        add(name.column(), Problem::Severity::Error,
            QStringLiteral("an array without a size in digits"), QStringLiteral("name[12]"));
    }
    if (!isIdentifier(setting->variableName)) {
        add(name.column(), Problem::Severity::Error,
            QStringLiteral("%1 is not a C name").arg(quotedText(setting->variableName)),
            QStringLiteral("letters, digits and \"_\", beginning with a letter"));
    }
}

void MemberReview::checkType()
{
    if (isBroken()) {
        return; // reported with the name: the end of the type is not known
    }
    const QString& type = setting->variableDataType;
    const bool isNum = setting->settingType == StructSetting::NUM;
    const bool isBool = setting->settingType == StructSetting::BOOL;
    const int bytes = StructLayout::byteCount(type);
    if (bytes == 0) {
        const QString nearest = nearestWord(type, StructLayout::dataTypes());
        add(pieces.firstColumn(), isNum ? Problem::Severity::Fatal : Problem::Severity::Error,
            QStringLiteral("%1 is not a type of the charger").arg(quotedText(type)),
            nearest.isEmpty() ? QStringLiteral("char, short, int or long, signed or unsigned")
                              : nearest);
    } else if (bytes != 1 && !isNum) {
        add(pieces.firstColumn(), Problem::Severity::Error,
            isBool ? QStringLiteral("a bool is stored in one byte and read in %1").arg(bytes)
                   : QStringLiteral("a text is stored in single bytes"),
            isBool ? QStringLiteral("unsigned char") : QStringLiteral("char"));
    }
    if (isText() && !setting->isArray) {
        add(pieces.name().column(), Problem::Severity::Error,
            QStringLiteral("a text needs an array"), pieces.name().text + QStringLiteral("[12]"));
    } else if (setting->isArray && !isText()) {
        add(pieces.name().column(), Problem::Severity::Error,
            QStringLiteral("a %1 cannot be an array").arg(pieces.kind()->keyword),
            QStringLiteral("a member for each number"));
    }
}

void MemberReview::checkSize()
{
    const MemberLine::Piece size = pieces.field(MemberField::Size);
    const QString autoSize = QStringLiteral("auto");
    switch (StructLayout::faultOf(*setting)) {
    case StructLayout::Fault::NoWidth:
        add(size.column(), Problem::Severity::Fatal,
            QStringLiteral("%1 is not a size").arg(quotedText(size.text)),
            nearestWord(size.text, {autoSize}).isEmpty()
                ? QStringLiteral("auto, or a number of bits in digits")
                : autoSize);
        break;
    case StructLayout::Fault::TextOfBits:
        add(size.column(), Problem::Severity::Fatal, QStringLiteral("a text cannot be a bit field"),
            autoSize);
        break;
    case StructLayout::Fault::TooWide:
        add(size.column(), Problem::Severity::Fatal,
            QStringLiteral("%1 bits do not fit into %2")
                .arg(size.text, setting->settingType == StructSetting::BOOL
                                    ? QStringLiteral("a bool")
                                    : setting->variableDataType),
            QStringLiteral("%1 or less").arg(StructLayout::mostBits(*setting)));
        break;
    case StructLayout::Fault::None:
        if (size.text != autoSize && size.text.toInt() == 0) {
            add(size.column(), Problem::Severity::Error, QStringLiteral("a bit field without bits"),
                QStringLiteral("1 or more"));
        }
        break;
    case StructLayout::Fault::UnknownKind: // not here
    case StructLayout::Fault::UnknownType: // reported with the type
        break;
    }
}

void MemberReview::checkFields()
{
    const MemberLine::Piece defaultPiece = pieces.field(MemberField::Default);
    checkQuoted(pieces.field(MemberField::Name), QStringLiteral("the name"));
    switch (setting->settingType) {
    case StructSetting::NUM:
        checkQuoted(pieces.field(MemberField::Units), QStringLiteral("the units"));
        checkScaleFactor();
        break;
    case StructSetting::BOOL:
        if (defaultPiece.text != QLatin1String("1") && defaultPiece.text != QLatin1String("0")) {
            add(defaultPiece.column(), Problem::Severity::Error,
                QStringLiteral("the default %1 means off").arg(quotedText(defaultPiece.text)),
                QStringLiteral("1 or 0"));
        }
        break;
    case StructSetting::STRING:
    case StructSetting::LIST:
        checkQuoted(defaultPiece, QStringLiteral("the default"));
        checkText(std::get<QString>(setting->defaultValue), defaultPiece.column(),
                  QStringLiteral("the default"));
        break;
    case StructSetting::UNKNOWN:
        break;
    }
    if (setting->settingType == StructSetting::LIST) {
        checkListItems();
    }
    checkLevel();
}

void MemberReview::checkScaleFactor()
{
    const MemberLine::Piece scale = pieces.field(MemberField::ScaleFactor);
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
    const QStringList& items = setting->list;
    const int firstItem = pieces.indexOf(MemberField::Items);
    const QString defaultItem = std::get<QString>(setting->defaultValue);
    QSet<QString> seen;
    for (int i = 0; i < items.size(); ++i) {
        const MemberLine::Piece piece = pieces.field(firstItem + i);
        const QString& item = items.at(i);
        const bool isEnd = i == 0 || i == items.size() - 1;
        if (isEnd && item.isEmpty()) {
            add(piece.column(), Problem::Severity::Error,
                QStringLiteral("%1 becomes an empty item").arg(quotedText(piece.text)),
                QStringLiteral("letters, digits, \"_\" and blanks in quotes: the first and the "
                               "last item cannot contain anything else"));
        } else if (!isEnd) {
            checkQuoted(piece, QStringLiteral("the item"));
        }
        checkText(item, piece.column(), QStringLiteral("the item"));
        if (seen.contains(item)) {
            add(piece.column(), Problem::Severity::Warning,
                QStringLiteral("the item %1 occurs twice").arg(quotedText(item)));
        }
        seen.insert(item);
    }
    if (items.isEmpty()) {
        add(pieces.field(MemberField::Level).column(), Problem::Severity::Error,
            QStringLiteral("a list without items"), pieces.kind()->form);
    } else if (!items.contains(defaultItem)) {
        const QString nearest = nearestWord(defaultItem, items);
        add(pieces.field(MemberField::Default).column(), Problem::Severity::Error,
            QStringLiteral("the default is not one of the items"),
            QLatin1Char('"') + (nearest.isEmpty() ? items.first() : nearest) + QLatin1Char('"'));
    }
}

void MemberReview::checkText(const QString& text, int column, const QString& what)
{
    const QString characters = StorableText::unstorable(text);
    if (!characters.isEmpty()) {
        add(column, Problem::Severity::Error,
            QStringLiteral("%1 contains %2, which the charger cannot store")
                .arg(what, quotedText(characters)),
            QStringLiteral("ASCII characters"));
    } else if (setting->arraySize > 0 && text.size() > setting->arraySize - 1) {
        add(column, Problem::Severity::Error,
            QStringLiteral("%1 is longer than the %2 characters of %3")
                .arg(what, QString::number(setting->arraySize - 1), pieces.name().text),
            QStringLiteral("a shorter text, or an array of %1").arg(text.size() + 1));
    }
}

void MemberReview::checkQuoted(const MemberLine::Piece& piece, const QString& what)
{
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

void MemberReview::checkLevel()
{
    const MemberLine::Piece level = pieces.field(MemberField::Level);
    if (level.text != basicLevel && !nearestWord(level.text, {basicLevel}).isEmpty()) {
        add(level.column(), Problem::Severity::Warning,
            QStringLiteral("%1 makes this an advanced setting").arg(quotedText(level.text)),
            basicLevel);
    }
}

void MemberReview::add(int column, Problem::Severity severity, const QString& text,
                       const QString& advice)
{
    found.append({number, column, severity, text, advice});
}
} // namespace HParser
