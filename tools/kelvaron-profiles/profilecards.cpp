#include "profilecards.h"

#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/countedtext.h"
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
QString row(const StructSetting& setting)
{
    return element(QStringLiteral("tr"),
                   QStringLiteral("<th scope=\"row\">") + escaped(setting.descriptiveName)
                       + QStringLiteral("</th><td>") + escaped(SettingsView::valueText(setting))
                       + QStringLiteral("</td>"));
}

QString table(const QList<const StructSetting*>& settings)
{
    QString rows;
    for (const StructSetting* setting : settings) {
        rows += row(*setting);
    }
    return element(QStringLiteral("table"), rows);
}

bool isOn(const StructSettings& structure, const QString& flag)
{
    return structure.getStructSettingByDescriptiveName(flag)->isOn();
}

/// Returns the chemistry and the flags; a flag that is off is shown as a word.
QString facts(const ProfileSettings& profile)
{
    const StructSettings& settings = *profile.settings;
    QStringList texts{profile.chemistry};
    if (isOn(settings, HParser::ProfileConventions::defaultFlag)) {
        texts.append(QStringLiteral("Default"));
    }
    texts.append(isOn(settings, HParser::ProfileConventions::activeFlag)
                     ? QStringLiteral("Active")
                     : QStringLiteral("Not active"));
    texts.append(isOn(settings, HParser::ProfileConventions::modifiableFlag)
                     ? QStringLiteral("Modifiable")
                     : QStringLiteral("Not modifiable"));
    QString html;
    for (const QString& text : qAsConst(texts)) {
        html += element(QStringLiteral("span"), escaped(text), QStringLiteral("fact"));
    }
    return element(QStringLiteral("p"), html);
}

QString card(int number, const ProfileSettings& profile)
{
    constexpr int titles = 2; // the first two are title and subtitle
    QList<const StructSetting*> settings;
    const QStringList flags = HParser::ProfileConventions::flags();
    for (const StructSetting* setting : SettingsView::settings(*profile.settings).mid(titles)) {
        if (!flags.contains(setting->descriptiveName)) {
            settings.append(setting);
        }
    }
    return element(QStringLiteral("div"),
                   element(QStringLiteral("h2"),
                           QStringLiteral("%1. ").arg(number) + escaped(profile.getTitle()))
                       + element(QStringLiteral("p"), escaped(profile.getSubtitle()),
                                 QStringLiteral("subtitle"))
                       + facts(profile) + table(settings),
                   QStringLiteral("card"));
}

QString notes(const ProfileFile& file)
{
    QString items;
    const QStringList messages = file.messages();
    for (const QString& message : messages) {
        items += element(QStringLiteral("p"), escaped(message));
    }
    return items.isEmpty() ? QString()
                           : element(QStringLiteral("div"), items, QStringLiteral("notes"));
}
} // namespace

QString ProfileCards::page(const ProfileFile& file)
{
    const QList<const ProfileSettings*> profiles = file.profiles();
    QString cards;
    if (file.globalSettings() != nullptr) {
        cards += element(
            QStringLiteral("div"),
            element(QStringLiteral("h2"), escaped(file.globalSettings()->getDescriptiveName()))
                + table(SettingsView::settings(*file.globalSettings())),
            QStringLiteral("card"));
    }
    for (int i = 0; i < profiles.size(); ++i) {
        cards += card(i + 1, *profiles.at(i));
    }
    return HtmlPage::document(
        file.name(),
        element(QStringLiteral("h1"), escaped(file.name()))
            + element(
                QStringLiteral("p"),
                countedText(profiles.size(), QStringLiteral("profile"), QStringLiteral("profiles")),
                QStringLiteral("summary"))
            + notes(file)
            + element(QStringLiteral("div"), QLatin1Char('\n') + cards, QStringLiteral("cards")));
}
