#include "comparisonpage.h"

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/countedtext.h"
#include "comparison.h"
#include "htmlpage.h"
#include "profilefile.h"
#include "profiles/profilesettings.h"
#include "settingsview.h"

using HParser::StructSetting;
using HParser::StructSettings;
using HtmlPage::element;
using HtmlPage::escaped;

namespace
{
const QString differs = QStringLiteral("differs");

QString row(const QString& mark, const QString& left, const QString& right,
            const QString& styleClass = {})
{
    return element(QStringLiteral("tr"),
                   element(QStringLiteral("td"), mark) + element(QStringLiteral("td"), left)
                       + element(QStringLiteral("td"), right),
                   styleClass);
}

QString settingText(const StructSetting& setting)
{
    return escaped(setting.descriptiveName + QStringLiteral(": ")
                   + SettingsView::valueText(setting));
}

/// The settings of two structs, one of which may be missing.
QString settingRows(const StructSettings* left, const StructSettings* right)
{
    const auto lefts =
        left != nullptr ? SettingsView::settings(*left) : QList<const StructSetting*>();
    const auto rights =
        right != nullptr ? SettingsView::settings(*right) : QList<const StructSetting*>();
    QString rows;
    for (int i = 0; i < qMax(lefts.size(), rights.size()); ++i) {
        const QString leftText = i < lefts.size() ? settingText(*lefts.at(i)) : QString();
        const QString rightText = i < rights.size() ? settingText(*rights.at(i)) : QString();
        const bool isPair = left != nullptr && right != nullptr;
        const bool isMarked = isPair && leftText != rightText;
        rows += row(isMarked ? differs : QString(), leftText, rightText,
                    isMarked ? differs : QString());
    }
    return rows;
}

QString heading(int index, const ProfileSettings* profile)
{
    return profile == nullptr ? QStringLiteral("not in this list")
                              : QStringLiteral("%1. ").arg(index + 1) + escaped(profile->getTitle())
                                    + element(QStringLiteral("div"),
                                              escaped(profile->getSubtitle() + QStringLiteral(" (")
                                                      + profile->chemistry + QLatin1Char(')')),
                                              QStringLiteral("subtitle"));
}

QString markOf(const Comparison::Entry& entry)
{
    if (entry.pair.left < 0) {
        return QStringLiteral("only right");
    }
    if (entry.pair.right < 0) {
        return QStringLiteral("only left");
    }
    return entry.isSame() ? QStringLiteral("same") : differs;
}

QString profileRows(const Comparison& comparison, const Comparison::Entry& entry)
{
    const ProfilePairs::Pair pair = entry.pair;
    const ProfileSettings* left =
        pair.left < 0 ? nullptr : comparison.leftFile().profiles().at(pair.left);
    const ProfileSettings* right =
        pair.right < 0 ? nullptr : comparison.rightFile().profiles().at(pair.right);
    QString rows = row(markOf(entry), heading(pair.left, left), heading(pair.right, right),
                       QStringLiteral("profile"));
    if (!entry.isSame()) {
        rows += settingRows(left != nullptr ? left->settings : nullptr,
                            right != nullptr ? right->settings : nullptr);
    }
    return element(QStringLiteral("tbody"), rows);
}

QString globalRows(const Comparison& comparison)
{
    const StructSettings* left = comparison.leftFile().globalSettings();
    const StructSettings* right = comparison.rightFile().globalSettings();
    if (left == nullptr || right == nullptr) {
        return {};
    }
    const bool isSame = comparison.globalDifferences().isEmpty();
    const QString name = escaped(left->getDescriptiveName());
    return element(QStringLiteral("tbody"), row(isSame ? QStringLiteral("same") : differs, name,
                                                name, QStringLiteral("profile"))
                                                + (isSame ? QString() : settingRows(left, right)));
}

QString summary(const Comparison& comparison)
{
    if (comparison.isSame()) {
        return QStringLiteral("No differences.");
    }
    int different = 0;
    for (const Comparison::Entry& entry : comparison.all()) {
        different += entry.isSame() ? 0 : 1;
    }
    return countedText(different, QStringLiteral("profile differs"),
                       QStringLiteral("profiles differ"))
           + QStringLiteral(". Those that are the same on both sides are shown without their "
                            "settings.");
}
} // namespace

QString ComparisonPage::page(const Comparison& comparison)
{
    const QString left = comparison.leftFile().name();
    const QString right = comparison.rightFile().name();
    QString table = element(QStringLiteral("thead"),
                            QStringLiteral("<tr><th scope=\"col\"></th><th scope=\"col\">")
                                + escaped(left) + QStringLiteral("</th><th scope=\"col\">")
                                + escaped(right) + QStringLiteral("</th></tr>"));
    table += globalRows(comparison);
    for (const Comparison::Entry& entry : comparison.all()) {
        table += profileRows(comparison, entry);
    }
    const QString title = left + QStringLiteral(" / ") + right;
    return HtmlPage::document(
        title,
        element(QStringLiteral("h1"), escaped(title))
            + element(QStringLiteral("p"), summary(comparison), QStringLiteral("summary"))
            + element(QStringLiteral("table"), QLatin1Char('\n') + table, QStringLiteral("lists")));
}
