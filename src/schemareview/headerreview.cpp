#include "schemareview/headerreview.h"

#include "CBGenerator/structheaderline.h"
#include "HEXGeneratorParser/hexutility.h"
#include "IntelHexFile/hexfile.h"
#include "base/quotedtext.h"
#include "schemareview/nearestword.h"
#include "schemareview/structreview.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

using HEXGeneratorParser::HexUtility;

namespace HParser
{
namespace
{
const QString headerForm = QStringLiteral("struct NAME { // Settings : \"Title\", instantiable");

QRegularExpression pattern(const char* text)
{
    return QRegularExpression(QString::fromLatin1(text),
                              QRegularExpression::UseUnicodePropertiesOption);
}

/// The word that begins at the position, or the one character of anything else.
QString wordAt(const QString& line, int position)
{
    static const QRegularExpression word = pattern("\\G[\\w\\p{M}]+");
    const QString found = word.match(line, position).captured();
    return found.isEmpty() ? line.mid(position, 1) : found;
}

/// Returns the position of the first visible character.
int firstColumn(const QString& line)
{
    int column = 1;
    while (column <= line.size() && line.at(column - 1).isSpace()) {
        ++column;
    }
    return column;
}
} // namespace

Problems HeaderReview::problems(const QString& text, int firstLine)
{
    HeaderReview review(firstLine);
    const HeaderText header(text, firstLine);
    review.checkStartAddress(header.startAddress());
    for (const HeaderText::Line& line : header.otherLines()) {
        review.readOutside(line, !header.startAddress());
    }
    for (const HeaderText::Struct& structure : header.structs()) {
        review.readStruct(structure);
    }
    review.finish(header);
    return review.found;
}

HeaderReview::HeaderReview(int firstLineNumber) : firstLine(firstLineNumber) {}

HeaderReview::~HeaderReview() = default;

void HeaderReview::readOutside(const HeaderText::Line& line, bool mayBeAddress)
{
    static const QRegularExpression likeStruct =
        pattern("\\A\\s*(typedef\\s+)?struct\\b|\\bSettings\\s*:\\s*\"");
    if (likeStruct.match(line.text).hasMatch()
        && !line.text.trimmed().startsWith(QLatin1String("//"))) {
        refuseHeader(line);
    } else if (mayBeAddress) {
        findMisspeltAddress(line.text, line.number);
    }
}

/// A line that was to open a struct of settings.
void HeaderReview::refuseHeader(const HeaderText::Line& line)
{
    static const QRegularExpression blank(QStringLiteral("[\\s,]+"));
    const QString lastWord = line.text.trimmed().section(blank, -1);
    const bool isMeantGlobal = !nearestWord(lastWord, {QStringLiteral("global")}).isEmpty();
    (isMeantGlobal ? meantGlobal : meantChemistry) = found.size();

    const StructHeaderLine header(line.text);
    const QString expected = header.expected();
    const QString word = wordAt(line.text, header.position());
    const QString nearest = nearestWord(word, expected.split(QStringLiteral(" or ")));
    const QString fault = word.isEmpty()
                              ? QStringLiteral("%1 is missing").arg(expected)
                              : QStringLiteral("%1 instead of %2").arg(quotedText(word), expected);
    found.append(
        {line.number, header.position() + 1, Problem::Severity::Error,
         QStringLiteral("%1: this line does not open a struct of settings, its members are ignored")
             .arg(fault),
         nearest.isEmpty() ? headerForm : nearest});
}

/// Keeps the first line that was probably meant to define the start address.
void HeaderReview::findMisspeltAddress(const QString& line, int number)
{
    static const QRegularExpression define = pattern("\\A(#?)\\s*(\\w+)\\s*(\\w*)");
    const QRegularExpressionMatch match = define.match(line.trimmed());
    const int begin = firstColumn(line);
    const QString name = QStringLiteral("PROFILESTARTADDRESS");
    if (misspeltAddress.line > 0 || !match.hasMatch()) {
        return;
    }
    const QString directive = match.captured(2);
    const bool isDefine = directive == QLatin1String("define") && !match.captured(1).isEmpty();
    if (isDefine && !nearestWord(match.captured(3), {name}).isEmpty()) {
        misspeltAddress = {number, begin + match.capturedStart(3), Problem::Severity::Fatal,
                           QStringLiteral("%1 is not the name of the profile start address")
                               .arg(quotedText(match.captured(3))),
                           name};
    } else if (!isDefine && match.captured(3) == name) {
        misspeltAddress = {number, begin, Problem::Severity::Fatal,
                           QStringLiteral("%1 does not define the profile start address")
                               .arg(quotedText(match.captured(1) + directive)),
                           QStringLiteral("#define")};
    }
}

void HeaderReview::readStruct(const HeaderText::Struct& structure)
{
    structs.push_back(std::make_unique<StructReview>(structure.header.number, structure.title,
                                                     structure.isGlobal, found));
    for (const HeaderText::Line& line : structure.members) {
        if (line.text.trimmed() == QLatin1String("};")) {
            found.append({line.number, firstColumn(line.text), Problem::Severity::Fatal,
                          QStringLiteral("\"};\" does not close a struct"), QStringLiteral("}")});
        } else if (HeaderText::opensStruct(line.text)) {
            found.append(
                {line.number, firstColumn(line.text), Problem::Severity::Fatal,
                 QStringLiteral("\"%1\" is not closed before this line").arg(structure.title),
                 QStringLiteral("} on a line of its own before it")});
        } else {
            structs.back()->addMember(line.text, line.number);
        }
    }
    structs.back()->finish();
}

void HeaderReview::checkStartAddress(const std::optional<HeaderText::StartAddress>& address)
{
    if (!address) {
        return; // reported at the end: a later line may be meant to define it
    }
    const HeaderText::Line& line = address->line;
    const int column = line.text.lastIndexOf(address->word) + 1;
    constexpr qint64 lastStart =
        static_cast<qint64>(IntelHexFile::flashAreaSize) - 1 - HexUtility::imageSize;
    if (!address->value) {
        found.append({line.number, column, Problem::Severity::Fatal,
                      QStringLiteral("%1 is not an address").arg(quotedText(address->word)),
                      QStringLiteral("a C integer such as 0x9C00")});
    } else if (*address->value < 0 || 2 * static_cast<qint64>(*address->value) > lastStart) {
        found.append({line.number, column, Problem::Severity::Error,
                      QStringLiteral("the profiles would be outside the charger's flash memory"),
                      QStringLiteral("a word address from 0 to 0x%1")
                          .arg(QString::number(lastStart / 2, 16).toUpper())});
    }
}

void HeaderReview::finish(const HeaderText& header)
{
    const bool isLastOpen = !header.structs().isEmpty() && !header.structs().last().isClosed;
    if (isLastOpen) {
        found.append({header.lastLine(), 0, Problem::Severity::Warning,
                      QStringLiteral("\"%1\" is not closed").arg(structs.back()->name()),
                      QStringLiteral("} on a line of its own")});
    }
    if (!header.startAddress() && misspeltAddress.line > 0) {
        found.append(misspeltAddress);
    } else if (!header.startAddress()) {
        found.append({firstLine, 0, Problem::Severity::Fatal,
                      QStringLiteral("the profile start address is missing"),
                      QStringLiteral("#define PROFILESTARTADDRESS 0x9C00")});
    }
    checkStructs();
    checkNames();
    checkTypes();
    checkSizes();
    std::stable_sort(found.begin(), found.end(), [](const Problem& one, const Problem& other) {
        return one.line < other.line || (one.line == other.line && one.column < other.column);
    });
}

void HeaderReview::checkStructs()
{
    const StructReview* global = nullptr;
    bool hasChemistry = false;
    for (const std::unique_ptr<StructReview>& structure : structs) {
        if (!structure->isGlobal()) {
            hasChemistry = true;
            continue;
        }
        if (global != nullptr) {
            found.append({global->line(), 1, Problem::Severity::Error,
                          QStringLiteral("these global settings are ignored: those in line %1 are "
                                         "used")
                              .arg(structure->line()),
                          QStringLiteral("one global struct")});
        }
        global = structure.get();
    }
    if (global == nullptr && meantGlobal >= 0) {
        found[meantGlobal].severity = Problem::Severity::Fatal;
    } else if (global == nullptr) {
        found.append({firstLine, 0, Problem::Severity::Fatal,
                      QStringLiteral("there is no struct of global settings"),
                      QStringLiteral("struct NAME { // Settings : \"Title\", global")});
    }
    if (!hasChemistry && meantChemistry >= 0) {
        found[meantChemistry].severity = Problem::Severity::Fatal;
    } else if (!hasChemistry) {
        found.append({firstLine, 0, Problem::Severity::Fatal,
                      QStringLiteral("there is no chemistry"), headerForm});
    }
}

void HeaderReview::checkNames()
{
    QHash<QString, int> lines;
    for (const std::unique_ptr<StructReview>& structure : structs) {
        if (structure->isGlobal()) {
            continue;
        }
        const QString name = structure->name();
        if (lines.contains(name)) {
            found.append({structure->line(), 1, Problem::Severity::Error,
                          QStringLiteral("the chemistry %1 is already in line %2, which is used")
                              .arg(quotedText(name), QString::number(lines.value(name))),
                          QStringLiteral("another title")});
        } else {
            lines.insert(name, structure->line());
        }
        if (name.trimmed().isEmpty()) {
            found.append({structure->line(), 1, Problem::Severity::Error,
                          QStringLiteral("a chemistry without a name"),
                          QStringLiteral("a title in the quotes")});
        }
    }
}

void HeaderReview::checkTypes()
{
    QHash<int, int> lines;
    for (const std::unique_ptr<StructReview>& structure : structs) {
        const std::optional<int> type = structure->type();
        if (!type) {
            continue;
        }
        if (lines.contains(*type)) {
            found.append({structure->typeLine(), structure->typeColumn(), Problem::Severity::Error,
                          QStringLiteral("the struct in line %2 also has the type %1: images "
                                         "cannot be read")
                              .arg(*type)
                              .arg(lines.value(*type)),
                          QStringLiteral("a unique type from 1 to 254")});
        } else {
            lines.insert(*type, structure->line());
        }
    }
}

void HeaderReview::checkSizes()
{
    // One profile fewer than fit is written.
    constexpr int largest = HexUtility::imageSize / 2;
    for (const std::unique_ptr<StructReview>& structure : structs) {
        const std::optional<int> size = structure->imageSize();
        if (size && *size > largest) {
            found.append({structure->line(), 1, Problem::Severity::Error,
                          QStringLiteral("\"%1\" takes %2 of the %3 bytes of a profile image: not "
                                         "one profile can be written")
                              .arg(structure->name())
                              .arg(*size)
                              .arg(HexUtility::imageSize),
                          QStringLiteral("fewer or smaller members: %1 bytes at most, which is a "
                                         "third more than the members have")
                              .arg(largest)});
        }
    }
}
} // namespace HParser
