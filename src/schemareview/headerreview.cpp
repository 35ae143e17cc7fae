#include "schemareview/headerreview.h"

#include "HEXGeneratorParser/hexutility.h"
#include "IntelHexFile/hexfile.h"
#include "base/quotedtext.h"
#include "schemareview/nearestword.h"
#include "schemareview/structheader.h"
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
QRegularExpression pattern(const char* text)
{
    return QRegularExpression(QString::fromLatin1(text),
                              QRegularExpression::UseUnicodePropertiesOption);
}

bool isStartAddress(const QString& line)
{
    static const QRegularExpression define =
        pattern("\\A\\s*#\\s*define\\s*PROFILESTARTADDRESS\\s*");
    return define.match(line).hasMatch();
}

/// Where the first visible character stands.
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
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        review.readLine(lines.at(i), firstLine + i);
    }
    review.finish(firstLine + lines.size() - 1);
    return review.found;
}

HeaderReview::HeaderReview(int firstLineNumber) : firstLine(firstLineNumber) {}

HeaderReview::~HeaderReview() = default;

void HeaderReview::readLine(const QString& line, int number)
{
    if (line.trimmed().isEmpty()) {
        return;
    }
    if (!hasStartAddress && isStartAddress(line)) {
        readStartAddress(line, number);
    }
    if (isInside) {
        readMember(line, number);
    } else {
        readOutside(line, number);
    }
}

void HeaderReview::readOutside(const QString& line, int number)
{
    static const QRegularExpression likeStruct =
        pattern("\\A\\s*(typedef\\s+)?struct\\b|\\bSettings\\s*:\\s*\"");
    if (StructHeader::isSound(line)) {
        openStruct(line, number);
    } else if (likeStruct.match(line).hasMatch()
               && !line.trimmed().startsWith(QLatin1String("//"))) {
        const StructHeader header(line);
        (header.isMeantGlobal() ? meantGlobal : meantChemistry) = found.size();
        found.append({number, header.column(), Problem::Severity::Error,
                      QStringLiteral("%1: this line opens no struct of settings, its members are "
                                     "ignored")
                          .arg(header.fault()),
                      header.advice()});
    } else if (!hasStartAddress) {
        findMisspeltAddress(line, number);
    }
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

void HeaderReview::readMember(const QString& line, int number)
{
    const QString word = line.trimmed();
    if (word == QLatin1String("}")) {
        closeStruct();
    } else if (word == QLatin1String("};")) {
        found.append({number, firstColumn(line), Problem::Severity::Fatal,
                      QStringLiteral("\"};\" does not close a struct"), QStringLiteral("}")});
        closeStruct();
    } else if (StructHeader::isSound(line)) {
        found.append(
            {number, firstColumn(line), Problem::Severity::Fatal,
             QStringLiteral("\"%1\" is not closed before this line").arg(structs.back()->name()),
             QStringLiteral("} on a line of its own before it")});
        closeStruct();
        openStruct(line, number);
    } else {
        structs.back()->addMember(line, number);
    }
}

void HeaderReview::readStartAddress(const QString& line, int number)
{
    hasStartAddress = true;
    const QString word = line.simplified().section(QLatin1Char(' '), -1);
    const int column = line.lastIndexOf(word) + 1;
    bool isNumber = false;
    const int address = word.toInt(&isNumber, 0);
    const QString advice = QStringLiteral("a C integer such as 0x9C00");
    constexpr qint64 lastStart =
        static_cast<qint64>(IntelHexFile::flashAreaSize) - 1 - HexUtility::imageSize;
    if (!isNumber) {
        found.append({number, column, Problem::Severity::Fatal,
                      QStringLiteral("%1 is no address").arg(quotedText(word)), advice});
    } else if (address < 0 || 2 * static_cast<qint64>(address) > lastStart) {
        found.append({number, column, Problem::Severity::Error,
                      QStringLiteral("the profiles would lie outside the charger's flash memory"),
                      QStringLiteral("a word address from 0 to 0x%1")
                          .arg(QString::number(lastStart / 2, 16).toUpper())});
    }
}

void HeaderReview::openStruct(const QString& line, int number)
{
    const QString title =
        line.section(QLatin1Char('"'), 1, 1); // between the first two quotes of the line
    const bool isGlobal = line.trimmed().endsWith(QLatin1String("global"));
    structs.push_back(std::make_unique<StructReview>(number, title, isGlobal, found));
    isInside = true;
}

void HeaderReview::closeStruct()
{
    structs.back()->finish();
    isInside = false;
}

void HeaderReview::finish(int lastLine)
{
    if (isInside) {
        found.append({lastLine, 0, Problem::Severity::Warning,
                      QStringLiteral("\"%1\" is not closed").arg(structs.back()->name()),
                      QStringLiteral("} on a line of its own")});
        closeStruct();
    }
    if (!hasStartAddress && misspeltAddress.line > 0) {
        found.append(misspeltAddress);
    } else if (!hasStartAddress) {
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
                          QStringLiteral("these global settings are dropped: those of line %1 "
                                         "count")
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
                      QStringLiteral("there is no chemistry"), StructHeader::form()});
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
            found.append(
                {structure->line(), 1, Problem::Severity::Error,
                 QStringLiteral("the chemistry %1 is there already in line %2, which counts")
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
                          QStringLiteral("the type %1 is that of the struct in line %2: images "
                                         "cannot be read")
                              .arg(*type)
                              .arg(lines.value(*type)),
                          QStringLiteral("a type of its own from 1 to 254")});
        } else {
            lines.insert(*type, structure->line());
        }
    }
}

void HeaderReview::checkSizes()
{
    // One profile fewer than there is room for is written.
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
                          QStringLiteral("fewer or smaller members: %1 bytes at most, a third of "
                                         "them more than the members have")
                              .arg(largest)});
        }
    }
}
} // namespace HParser
