#include "CBGenerator/structreview.h"

#include "CBGenerator/dependencygraph.h"
#include "CBGenerator/formula.h"
#include "CBGenerator/memberreview.h"
#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "CBGenerator/visualorder.h"
#include "HEXGeneratorParser/hexutility.h"
#include "quotedtext.h"
#include "xmlformat/xmlutility.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

using HEXGeneratorParser::HexUtility;
using XMLGeneratorParser::XMLUtility;

namespace HParser
{
namespace
{
// Fields of a member line; the kinds but num have theirs elsewhere.
constexpr int nameOfLine = -1;
constexpr int sizeField = 1;
constexpr int lowerField = 2;
constexpr int upperField = 3;
constexpr int scaleField = 4;
constexpr int decimalsField = 5;
constexpr int defaultField = 9;
constexpr int formulaFields[] = {lowerField, upperField, scaleField, decimalsField, defaultField};

constexpr int fewestShown = 2;
constexpr int erasedType = 255;
constexpr int longestLoop = 10;

int labelField(const StructSetting& setting)
{
    return setting.settingType == StructSetting::NUM ? 6 : 2;
}

int placeField(const StructSetting& setting)
{
    return setting.settingType == StructSetting::NUM ? 10 : 5;
}

QString numberText(double number)
{
    return QString::number(number, 'g', 6);
}

/// How many letters have to be changed to make one of the other; more than `most` counts as that.
int distance(const QString& one, const QString& other, int most)
{
    if (std::abs(one.size() - other.size()) >= most || one.size() > 64) {
        return most;
    }
    QVector<int> row(other.size() + 1);
    for (int j = 0; j <= other.size(); ++j) {
        row[j] = j;
    }
    for (int i = 1; i <= one.size(); ++i) {
        int diagonal = row.at(0);
        row[0] = i;
        for (int j = 1; j <= other.size(); ++j) {
            const int changed = one.at(i - 1).toLower() == other.at(j - 1).toLower() ? 0 : 1;
            const int best = std::min({row.at(j) + 1, row.at(j - 1) + 1, diagonal + changed});
            diagonal = row.at(j);
            row[j] = best;
        }
    }
    return std::min(most, row.last());
}

/// A name near this one that gives a tag.
QString soundName(const QString& name)
{
    QString plain;
    for (const QChar c : name) {
        const bool isSound = c.isLetterOrNumber() || QStringLiteral("_- /<>&%").contains(c);
        plain += isSound ? c : QLatin1Char(' ');
    }
    QStringList words = plain.simplified().split(QLatin1Char(' '));
    // A number goes behind the words: a tag begins with a letter.
    for (int i = 0; i < words.size() && !words.first().isEmpty() && !words.first().at(0).isLetter();
         ++i) {
        words.append(words.takeFirst());
    }
    const QString sound = words.join(QLatin1Char(' '));
    return XMLUtility::isTag(XMLUtility::xmlTagFromDescriptiveName(sound))
               ? sound
               : QStringLiteral("Setting ") + sound;
}
} // namespace

StructReview::StructReview(int line, const QString& name, bool isGlobalStruct, Problems& problems)
    : headerLine(line), structName(name), global(isGlobalStruct), found(problems),
      settings(std::make_unique<StructSettings>(nullptr))
{}

StructReview::~StructReview() = default;

void StructReview::addMember(const QString& lineText, int lineNumber)
{
    MemberReview review(lineText, lineNumber, found);
    const bool isSound = review.check();
    isWhole = isWhole && isSound;
    StructSetting* setting = isSound ? new StructSetting(lineText, settings.get()) : nullptr;
    const QString variable = review.line().name().text.section(QLatin1Char('['), 0, 0);
    if (!memberOfVariable.contains(variable)) {
        memberOfVariable.insert(variable, static_cast<int>(members.size()));
    }
    members.push_back({lineNumber, review.line(), setting});
}

void StructReview::finish()
{
    QList<StructSetting*> all;
    for (const Member& member : members) {
        if (member.setting != nullptr) {
            all.append(member.setting);
        }
    }
    settings->setDescriptiveName(structName);
    settings->setGlobal(global);
    settings->setOriginalOrderStructSettings(all);
    settings->setStructSettings(isWhole ? sortByVisualIndex(all) : shownAmong(all));
    for (const StructSetting* setting : settings->getStructSettings()) {
        shown.insert(setting);
    }
    checkPlaces();
    checkNames();
    checkConventions();
    checkBits();
    checkFormulas();
    checkDependencies();
    if (canEvaluate && isWhole) {
        settings->buildFormulaTrees();
        checkValues();
    }
}

/// The settings that are shown if the lines that cannot be parsed become settings as well.
QList<StructSetting*> StructReview::shownAmong(const QList<StructSetting*>& all) const
{
    QList<StructSetting*> list;
    for (StructSetting* setting : all) {
        const std::optional<double> place = setting->visualPosition();
        if (place && *place >= 0 && *place < static_cast<double>(members.size())
            && *place == std::floor(*place)) {
            list.append(setting);
        }
    }
    return list;
}

void StructReview::checkPlaces()
{
    const int count = static_cast<int>(members.size());
    QMap<int, const Member*> taken;
    for (const Member& member : members) {
        if (member.setting == nullptr) {
            continue;
        }
        const int field = placeField(*member.setting);
        const QString text = member.pieces.field(field).text;
        const std::optional<double> place = member.setting->visualPosition();
        const bool isWholeNumber = place && *place == std::floor(*place);
        const QString advice =
            QStringLiteral("a number from 0 to %1, or -1 to hide it").arg(count - 1);
        if (isWholeNumber && *place < 0) {
            continue; // hidden on purpose
        }
        if (!isWholeNumber) {
            add(member, field, Problem::Severity::Error,
                QStringLiteral("the place %1 is no whole number: the setting is lost")
                    .arg(quotedText(text)),
                advice);
        } else if (*place >= count) {
            add(member, field, Problem::Severity::Error,
                QStringLiteral("the place %1 is lost: the struct has %2 members")
                    .arg(text, QString::number(count)),
                advice);
        } else if (const Member* first = taken.value(static_cast<int>(*place))) {
            add(member, field, Problem::Severity::Error,
                QStringLiteral("the place %1 is taken by \"%2\" in line %3")
                    .arg(text, first->setting->descriptiveName, QString::number(first->line)),
                QStringLiteral("a place of its own"));
        } else {
            taken.insert(static_cast<int>(*place), &member);
        }
    }
}

void StructReview::checkNames()
{
    QMap<QString, int> variables;
    QMap<QString, int> tags;
    if (!global) {
        tags.insert(QStringLiteral("chemistry"), headerLine);
    }
    for (const Member& member : members) {
        if (member.setting == nullptr) {
            continue;
        }
        const QString variable = member.setting->variableName;
        if (variables.contains(variable)) {
            add(member, nameOfLine, Problem::Severity::Error,
                QStringLiteral("the C name %1 is taken in line %2")
                    .arg(quotedText(variable), QString::number(variables.value(variable))),
                QStringLiteral("a name of its own"));
        } else {
            variables.insert(variable, member.line);
        }
        checkTag(member, tags);
    }
}

void StructReview::checkTag(const Member& member, QMap<QString, int>& lines)
{
    const QString name = member.setting->descriptiveName;
    const QString tag = XMLUtility::xmlTagFromDescriptiveName(name);
    const int field = labelField(*member.setting);
    if (isShown(member.setting) && !XMLUtility::isTag(tag)) {
        add(member, field, Problem::Severity::Error,
            QStringLiteral("%1 makes %2, which is no XML tag: saved profiles cannot be read")
                .arg(quotedText(name), quotedText(QLatin1Char('<') + tag + QLatin1Char('>'))),
            QLatin1Char('"') + soundName(name) + QLatin1Char('"'));
    }
    const auto taken = lines.constFind(tag);
    if (taken == lines.constEnd()) {
        lines.insert(tag, member.line);
    } else if (*taken == headerLine) {
        add(member, field, Problem::Severity::Error,
            QStringLiteral("the tag of %1 is that of the profile's chemistry")
                .arg(quotedText(name)),
            QStringLiteral("another name"));
    } else {
        add(member, field, Problem::Severity::Error,
            QStringLiteral("%1 has the same XML tag as line %2: one value gets lost")
                .arg(quotedText(name), QString::number(*taken)),
            QStringLiteral("a name that differs in more than case, blanks and / < > & %"));
    }
}

void StructReview::checkConventions()
{
    checkTypeMember();
    checkChecksum();
    if (!global) {
        checkFlags();
    }
}

void StructReview::checkFlags()
{
    for (const QString& name : ProfileConventions::flags()) {
        const Member* member = memberNamed(name);
        const QString line =
            QStringLiteral("unsigned char %1; // bool, 1, \"%2\", Flags, 0, -1, basic")
                .arg(name == QLatin1String("default") ? QStringLiteral("isDefault") : name, name);
        if (member == nullptr) {
            if (!mayHoldName(name)) {
                addForStruct(Problem::Severity::Fatal,
                             QStringLiteral("\"%1\" has no setting \"%2\"").arg(structName, name),
                             line);
            }
        } else if (!ProfileConventions::hasFlag(*settings, name)) {
            add(*member, 0, Problem::Severity::Fatal,
                QStringLiteral("\"%1\" has to be a bool").arg(name), line);
        } else if (isShown(member->setting)) {
            add(*member, placeField(*member->setting), Problem::Severity::Warning,
                QStringLiteral("\"%1\" is set in the list of profiles").arg(name),
                QStringLiteral("-1, which hides it"));
        }
    }
    if (settings->getStructSettings().size() < fewestShown && isWhole) {
        addForStruct(
            Problem::Severity::Fatal,
            QStringLiteral("\"%1\" shows %2 settings: the first two are title and subtitle")
                .arg(structName)
                .arg(settings->getStructSettings().size()),
            QStringLiteral("places from 0 on for two texts \"Title\" and \"Subtitle\""));
    }
}

void StructReview::checkTypeMember()
{
    const QString form = QStringLiteral(
        "unsigned char type; // num, auto, 2, 2, x1, 0, \"type\", \"\", Identity, 2, -1, advanced");
    for (std::size_t i = 0; i < members.size(); ++i) {
        const Member& member = members[i];
        const bool isNamed =
            member.setting != nullptr && member.setting->descriptiveName == QLatin1String("type");
        if (isNamed && i > 0) {
            add(member, labelField(*member.setting), Problem::Severity::Fatal,
                QStringLiteral("\"type\" is the first member of a struct and no other"),
                QStringLiteral("another name"));
        }
    }
    if (members.empty() || members.front().setting == nullptr) {
        if (members.empty()) {
            addForStruct(Problem::Severity::Fatal,
                         QStringLiteral("\"%1\" has no members").arg(structName), form);
        }
        return;
    }
    const Member& first = members.front();
    const StructSetting& setting = *first.setting;
    if (setting.descriptiveName != QLatin1String("type")) {
        add(first, labelField(setting), Problem::Severity::Fatal,
            QStringLiteral("the first member of a struct is its \"type\""), form);
        return;
    }
    const bool isByte =
        setting.size == QLatin1String("auto")
            ? HexUtility::calculateByteCount(setting.variableDataType) == 1 && !setting.isArray
            : setting.size.toInt() == 8;
    if (setting.settingType != StructSetting::NUM || !isByte) {
        add(first, 0, Problem::Severity::Fatal,
            QStringLiteral("\"type\" has to be a number of one byte"), form);
    } else if (isShown(&setting)) {
        add(first, placeField(setting), Problem::Severity::Warning,
            QStringLiteral("\"type\" is nothing to be edited"),
            QStringLiteral("-1, which hides it"));
    }
}

void StructReview::checkChecksum()
{
    const Member* member = memberNamed(QStringLiteral("checksum"));
    if (member == nullptr) {
        if (!mayHoldName(QStringLiteral("checksum"))) {
            addForStruct(
                Problem::Severity::Warning,
                QStringLiteral("\"%1\" has no \"checksum\": damage goes unnoticed").arg(structName),
                QStringLiteral("unsigned char checksum; // num, auto, 0, 255, x1, 0, "
                               "\"checksum\", \"\", Identity, 0, -1, advanced"));
        }
        return;
    }
    const StructSetting& setting = *member->setting;
    const bool isByte =
        setting.size == QLatin1String("auto")
            ? HexUtility::calculateByteCount(setting.variableDataType) == 1 && !setting.isArray
            : setting.size.toInt() == 8;
    const bool isCount = setting.settingType == StructSetting::NUM
                         && setting.scaleFactor->toString().toDouble() == 1;
    if (!isByte || !isCount) {
        add(*member, 0, Problem::Severity::Error,
            QStringLiteral("\"checksum\" has to be a number of one byte with scale factor 1"),
            QStringLiteral("num, auto, 0, 255, x1, 0, \"checksum\", \"\", Identity, 0, -1, "
                           "advanced, of type unsigned char"));
    }
}

void StructReview::checkBits()
{
    if (!isWhole) {
        return;
    }
    int bits = 0;
    int firstLine = headerLine; // of the bit fields that stand together
    bool isEven = true;
    const auto text = [&] {
        return QStringLiteral("the bit fields from line %1 on have %2 bits, no whole bytes")
            .arg(firstLine)
            .arg(bits);
    };
    const auto advice = [&] {
        return QStringLiteral("fields of %1 more bits, or of %2 fewer")
            .arg(8 - bits % 8)
            .arg(bits % 8);
    };
    for (const Member& member : members) {
        const bool isChecksum = member.setting->descriptiveName == QLatin1String("checksum");
        if (member.setting->size != QLatin1String("auto") && !isChecksum) {
            firstLine = bits == 0 ? member.line : firstLine;
            bits += member.setting->size.toInt();
            continue;
        }
        if (bits % 8 != 0) {
            add(member, sizeField, Problem::Severity::Fatal,
                text() + QStringLiteral(", before this member"), advice());
            isEven = false;
        }
        bits = 0;
    }
    if (bits % 8 != 0) {
        addForStruct(Problem::Severity::Fatal,
                     text() + QStringLiteral(", at the end of \"%1\"").arg(structName), advice());
        isEven = false;
    }
    if (isEven) {
        size = HexUtility::getChemistrySize(settings.get());
    }
}

void StructReview::checkFormulas()
{
    for (const Member& member : members) {
        if (member.setting == nullptr || member.setting->settingType != StructSetting::NUM) {
            continue;
        }
        for (const int field : formulaFields) {
            canEvaluate = checkFormula(member, field) && canEvaluate;
        }
    }
}

bool StructReview::checkFormula(const Member& member, int field)
{
    const MemberLine::Piece piece = member.pieces.field(field);
    const int skipped = field == scaleField ? 1 : 0; // the marker character
    if (skipped == 1 && !piece.raw.isEmpty() && piece.raw.at(0).isDigit()) {
        return false; // the marker is missing: told with the line
    }
    const QString text = piece.raw.mid(skipped);
    const QList<FormulaReview::Fault> faults = FormulaReview::faults(
        text, [this](const QString& formulaName) { return judgeName(formulaName); });
    bool isSound = true;
    for (const FormulaReview::Fault& fault : faults) {
        const int index = skipped + fault.position;
        const int end = piece.columns.isEmpty() ? piece.column() : piece.columns.last() + 1;
        found.append({member.line, piece.columns.value(index, end),
                      fault.isHarmless ? Problem::Severity::Warning : Problem::Severity::Fatal,
                      fault.text, fault.advice});
        isSound = isSound && fault.isHarmless;
    }
    return isSound;
}

FormulaReview::Fault StructReview::judgeName(const QString& formulaName) const
{
    const auto named = memberOfVariable.constFind(formulaName);
    if (named == memberOfVariable.constEnd()) {
        const QString nearest = nearestVariable(formulaName);
        return {0, QStringLiteral("no setting is called \"%1\"").arg(formulaName),
                nearest.isEmpty() ? QStringLiteral("the C name of a setting of this struct")
                                  : nearest};
    }
    const Member& member = members[static_cast<std::size_t>(*named)];
    if (member.setting == nullptr) {
        return {}; // what its line would have been is not known
    }
    if (!isShown(member.setting)) {
        return {
            0, QStringLiteral("\"%1\" is not shown: formulas cannot name it").arg(formulaName),
            QStringLiteral("a place from 0 on for it in line %1, or a number").arg(member.line)};
    }
    if (member.setting->settingType != StructSetting::NUM) {
        return {0, QStringLiteral("\"%1\" is no num and hardly a number").arg(formulaName),
                QStringLiteral("the C name of a num"), true};
    }
    return {};
}

QString StructReview::nearestVariable(const QString& formulaName) const
{
    constexpr int farthest = 3;
    constexpr std::size_t mostMembers = 1000;
    QString nearest;
    int least = farthest;
    for (std::size_t i = 0; i < std::min(members.size(), mostMembers); ++i) {
        const StructSetting* setting = members[i].setting;
        const int letters =
            isShown(setting) ? distance(setting->variableName, formulaName, farthest) : farthest;
        if (letters < least) {
            least = letters;
            nearest = setting->variableName;
        }
    }
    return nearest;
}

void StructReview::checkDependencies()
{
    const QList<StructSetting*> all = settings->getOriginalOrderStructSettings();
    for (StructSetting* setting : all) {
        const QList<Formula*> formulas = setting->evaluatedFormulas();
        for (Formula* formula : formulas) {
            formula->buildFormulaTree(settings->getStructSettings());
            canEvaluate = canEvaluate && formula->hasTree();
        }
    }
    DependencyGraph graph(*settings);
    const QList<QList<const StructSetting*>> loops = graph.loops();
    for (const QList<const StructSetting*>& loop : loops) {
        QStringList names;
        for (const StructSetting* setting : loop.mid(0, longestLoop)) {
            names.append(QLatin1Char('"') + setting->descriptiveName + QLatin1Char('"'));
        }
        if (loop.size() > longestLoop) {
            names.append(QStringLiteral("..."));
        }
        const Member& last = *memberOf(loop.at(loop.size() - 2));
        for (const int field : fieldsThatFollow(last, loop.last())) {
            add(last, field, Problem::Severity::Fatal,
                QStringLiteral("formulas follow each other in a loop: %1")
                    .arg(names.join(QStringLiteral(" -> "))),
                QStringLiteral("a formula without \"%1\"").arg(loop.last()->variableName));
        }
        canEvaluate = false;
    }
    const StructSetting* avalanche = loops.isEmpty() ? graph.findAvalanche() : nullptr;
    if (avalanche != nullptr) {
        add(*memberOf(avalanche), nameOfLine, Problem::Severity::Fatal,
            QStringLiteral("a change of \"%1\" sets off more than %2 others")
                .arg(avalanche->descriptiveName, QString::number(DependencyGraph::mostChanges)),
            QStringLiteral("formulas that name fewer settings that have formulas themselves"));
    }
}

void StructReview::checkValues()
{
    for (const Member& member : members) {
        if (member.setting != nullptr && member.setting->settingType == StructSetting::NUM
            && member.setting->descriptiveName != QLatin1String("checksum")) {
            checkNumber(member);
        }
    }
    const bool hasType = !members.empty() && members.front().setting != nullptr
                         && members.front().setting->descriptiveName == QLatin1String("type");
    if (hasType) {
        checkTypeNumber(members.front());
    }
}

void StructReview::checkTypeNumber(const Member& member)
{
    const double value = member.setting->number();
    if (!(value >= 1 && value < erasedType) || value != std::floor(value)) {
        add(member, defaultField, Problem::Severity::Error,
            QStringLiteral("%1 is no type: erased memory reads as 255, missing one as 0")
                .arg(numberText(value)),
            QStringLiteral("a whole number from 1 to 254"));
        return;
    }
    typeNumber = static_cast<int>(value);
}

void StructReview::checkNumber(const Member& member)
{
    const StructSetting& setting = *member.setting;
    const double lower = setting.lowerBound->toDouble();
    const double upper = setting.upperBound->toDouble();
    const double value = setting.number();
    const double scale = setting.scaleFactor->toDouble();
    const double decimals = setting.decimalPlaces->toDouble();
    const double tolerance = 1e-9 * std::max(1.0, std::abs(value));
    if (!(lower <= upper)) {
        add(member, lowerField, Problem::Severity::Warning,
            QStringLiteral("the lower bound %1 is above the upper bound %2")
                .arg(numberText(lower), numberText(upper)),
            QStringLiteral("bounds that leave room"));
    } else if (!(value >= lower - tolerance && value <= upper + tolerance)) {
        add(member, defaultField, Problem::Severity::Warning,
            QStringLiteral("the default %1 is not within %2 and %3")
                .arg(numberText(value), numberText(lower), numberText(upper)),
            QStringLiteral("a default within the bounds"));
    }
    if (!(decimals >= 0 && decimals <= 9) || decimals != std::floor(decimals)) {
        add(member, decimalsField, Problem::Severity::Warning,
            QStringLiteral("%1 decimal places").arg(numberText(decimals)),
            QStringLiteral("a whole number from 0 to 9"));
    } else if (scale > 0 && scale > std::pow(10, -decimals) * (1 + 1e-9)) {
        add(member, scaleField, Problem::Severity::Warning,
            QStringLiteral("values of %1 decimals are stored in steps of %2 and come back changed")
                .arg(numberText(decimals), numberText(scale)),
            QLatin1Char('x') + QString::number(std::pow(10, -decimals), 'g', 10));
    }
    if (lower < 0) {
        add(member, lowerField, Problem::Severity::Warning,
            QStringLiteral("negative values are read back as large ones"),
            QStringLiteral("a bound of 0 or more"));
    }
    const int bits = setting.size == QLatin1String("auto")
                         ? 8 * HexUtility::calculateByteCount(setting.variableDataType)
                         : setting.size.toInt();
    const double most = std::pow(2, std::min(bits, 31)) - 1;
    if (bits > 0 && scale > 0 && upper / scale > most + 0.5) {
        add(member, upperField, Problem::Severity::Warning,
            QStringLiteral("%1 does not fit into %2 bits in steps of %3")
                .arg(numberText(upper), QString::number(bits), numberText(scale)),
            QStringLiteral("%1 or less, or a wider type").arg(numberText(most * scale)));
    }
}

/// The fields whose formulas name the setting.
QList<int> StructReview::fieldsThatFollow(const Member& member, const StructSetting* followed)
{
    const QList<Formula*> formulas = member.setting->evaluatedFormulas();
    QList<int> fields;
    for (int i = 0; i < formulas.size(); ++i) {
        bool isNamed = false;
        formulas.at(i)->visitSettings(
            [&](const StructSetting* named) { isNamed = isNamed || named == followed; });
        if (isNamed) {
            fields.append(formulaFields[i]);
        }
    }
    return fields;
}

const StructReview::Member* StructReview::memberOf(const StructSetting* setting) const
{
    const auto member = std::find_if(members.begin(), members.end(),
                                     [=](const Member& m) { return m.setting == setting; });
    return member == members.end() ? nullptr : &*member;
}

const StructReview::Member* StructReview::memberNamed(const QString& descriptiveName) const
{
    const auto member = std::find_if(members.begin(), members.end(), [&](const Member& m) {
        return m.setting != nullptr && m.setting->descriptiveName == descriptiveName;
    });
    return member == members.end() ? nullptr : &*member;
}

bool StructReview::isShown(const StructSetting* setting) const
{
    return shown.contains(setting);
}

/// True when a line that cannot be parsed may have been meant for this setting.
bool StructReview::mayHoldName(const QString& descriptiveName) const
{
    const QString quoted = QLatin1Char('"') + descriptiveName + QLatin1Char('"');
    return std::any_of(members.begin(), members.end(), [&](const Member& member) {
        if (member.setting != nullptr) {
            return false;
        }
        const QList<MemberLine::Piece> fields = member.pieces.fields();
        return std::any_of(fields.begin(), fields.end(),
                           [&](const MemberLine::Piece& piece) { return piece.text == quoted; });
    });
}

int StructReview::typeLine() const
{
    return members.empty() ? headerLine : members.front().line;
}

int StructReview::typeColumn() const
{
    return members.empty() ? 0 : members.front().pieces.field(defaultField).column();
}

void StructReview::add(const Member& member, int field, Problem::Severity severity,
                       const QString& text, const QString& advice)
{
    const int column =
        field == nameOfLine ? member.pieces.name().column() : member.pieces.field(field).column();
    found.append({member.line, column, severity, text, advice});
}

void StructReview::addForStruct(Problem::Severity severity, const QString& text,
                                const QString& advice)
{
    found.append({headerLine, 1, severity, text, advice});
}
} // namespace HParser
