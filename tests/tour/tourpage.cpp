#include "tourpage.h"

#include "base/textfile.h"

#include <QDir>
#include <QMap>

namespace
{
struct Caption
{
    QString title;
    QString sentence;
};

const QMap<QString, Caption>& captions()
{
    static const QMap<QString, Caption> all = {
        {"start",
         {"The start", "The list of profiles is empty; nothing is remembered from the last run."}},
        {"wizard-chemistry",
         {"A new profile: the chemistry",
          "\"Create New Profile\" opens the wizard, which first asks what kind of battery it is."}},
        {"wizard-settings",
         {"A new profile: its settings",
          "Then it asks for the title, the subtitle and the settings; \"Finish\" makes the "
          "profile."}},
        {"three-profiles", {"Three profiles", "New profiles stand at the end of the list."}},
        {"view-mode",
         {"Looking at a profile", "A click on a row shows the profile; nothing can be changed."}},
        {"field-tooltip",
         {"What a field takes",
          "A pointer that rests on a field finds its bounds, decimal places and default."}},
        {"field-note",
         {"A number that is too large",
          "It becomes the most that is allowed; a note beside the field says so."}},
        {"edit-mode-advanced",
         {"Editing, with advanced settings",
          "\"Edit Profile\" opens the settings, the box \"Edit Advanced Settings\" the others; the "
          "commands that would pull the profile away are locked."}},
        {"edit-mode-advanced-below",
         {"The advanced settings", "Their values follow from the basic ones until they are "
                                   "changed by hand."}},
        {"changes-saved",
         {"The changes are saved", "\"Save Changes\" keeps the new values; the row has the new "
                                   "title."}},
        {"main-window",
         {"Active, default, and in order",
          "The lights mark active profiles, the dark D the default one, and the buttons below the "
          "list move a profile up and down."}},
        {"list-menu",
         {"What can be done with a profile",
          "The context menu of a row has it all, with the keys."}},
        {"row-tooltip", {"The chemistry", "The tooltip of a row names it."}},
        {"row-dragged",
         {"Dragging a row",
          "A line shows where the row would go. A move can be taken back from the same menu."}},
        {"message-delete",
         {"Deleting a profile", "The cross in a row deletes the profile, after a question."}},
        {"save-dialog", {"Saving the list to a file", "The whole list goes into one XML file."}},
        {"message-saved", {"The list is saved", "The editor tells when the file is written."}},
        {"list-changed",
         {"Changed since saved", "The status bar says when the list is not as it was saved."}},
        {"message-delete-all",
         {"Deleting all profiles",
          "This cannot be undone, so \"No\" is what the Enter key means."}},
        {"list-empty", {"An empty list", "Without a profile there is nothing to show."}},
        {"load-dialog", {"Loading profiles from a file", "The saved file is chosen."}},
        {"loaded-back", {"The list is back", "The profiles are there again, in their order."}},
        {"write-port",
         {"Writing to the charger", "The port of the programming cable is chosen first."}},
        {"port-tooltip",
         {"What the system knows of a port", "The tooltip of a port names the device."}},
        {"write-working",
         {"Writing is under way", "The charger's old profiles are erased, then the new ones are "
                                  "written."}},
        {"write-success", {"The profiles are written", "The charger holds the list now."}},
        {"message-reset",
         {"Stay in bootloader mode, or reset?",
          "Stay when more is to be done; a reset starts the charger's firmware."}},
        {"read-port", {"Reading from the charger", "Again the port is chosen first."}},
        {"read-working", {"Reading is under way", "It takes a few seconds."}},
        {"message-add-or-replace",
         {"Add or replace?",
          "What comes from the charger can be added to the list or take its place."}},
        {"read-success", {"The profiles are read", "They are in the list behind this window."}},
        {"read-back", {"Read back", "The charger gave back what was written, in the same order."}},
        {"firmware-tool",
         {"The firmware tool", "It writes new firmware from a bundle file to the charger."}},
        {"firmware-chosen",
         {"The firmware file is chosen",
          "\"Show Advanced Options...\" shows the box \"Overwrite Profile Data\"."}},
        {"firmware-erasing",
         {"Erasing", "Do not unplug the charger before all four stages are over."}},
        {"firmware-loading", {"Loading the file", "The first stage has its mark."}},
        {"firmware-uploading", {"Uploading", "The firmware goes to the charger."}},
        {"firmware-verifying", {"Verifying", "It is read again and compared."}},
        {"firmware-verified", {"The firmware is written", "All four stages have their marks."}},
        {"after-flash",
         {"After the update", "The settings of the newest bundle are in use; the list stays."}},
        {"update-check",
         {"Checking for new firmware",
          "The editor asks the maker's server for the newest bundle; here one on this computer "
          "answers in its place."}},
        {"message-up-to-date",
         {"Already up-to-date", "A newer bundle would have been downloaded and put to use."}},
        {"edit-menu",
         {"Global settings",
          "The settings that all profiles share cannot be edited in this version; the command is "
          "greyed out."}},
        {"message-getting-started",
         {"Getting started", "The help tells how to connect the charger."}},
        {"message-about", {"About", "The versions of the editor and of the bundle in use."}},
    };
    return all;
}
} // namespace

bool TourPage::describes(const QString& name)
{
    return captions().contains(name);
}

void TourPage::add(const QString& name, const QString& fileName)
{
    const Caption caption = captions().value(name);
    figures.append(
        QStringLiteral("<figure id=\"%1\">\n<h2>%1. %2</h2>\n<figcaption>%3</figcaption>\n"
                       "<img src=\"%4\" alt=\"%2\">\n</figure>\n")
            .arg(QString::number(figures.size() + 1), caption.title.toHtmlEscaped(),
                 caption.sentence.toHtmlEscaped(), fileName.toHtmlEscaped()));
}

bool TourPage::write(const QString& folder) const
{
    const QString page =
        QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\">\n<meta charset=\"utf-8\">\n"
                       "<title>A tour through Kelvaron Profile Editor</title>\n<style>\n"
                       "body { font-family: sans-serif; max-width: 64em; margin: 2em auto; "
                       "background: #f2f2f2; color: #222; }\n"
                       "figure { margin: 0 0 2em; padding: 1em; background: #fff; }\n"
                       "h2 { margin: 0 0 0.3em; font-size: 1.2em; }\n"
                       "img { display: block; max-width: 100%; margin-top: 1em; "
                       "border: 1px solid #999; }\n</style>\n"
                       "<h1>A tour through Kelvaron Profile Editor</h1>\n"
                       "<p>The real editor, the simulated charger, and every step of the "
                       "main job.</p>\n")
        + figures.join(QString()) + QStringLiteral("</html>\n");
    return TextFile::writeBytes(QDir(folder).absoluteFilePath("index.html"), page.toUtf8());
}
