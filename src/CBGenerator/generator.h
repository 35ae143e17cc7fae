#pragma once

#include "CBGenerator/headertext.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

namespace HParser
{
class StructSetting;
class StructSettings;
struct SchemaFault;

/// The settings schema: parses the schema header (see docs/file-formats/schema-header.md).
///
/// Any malformation is a fatal assertion; the file, the number of the line and the line are printed
/// to standard output.
class Generator : public QObject
{
    Q_OBJECT

public:
    explicit Generator(QObject* parent);

    /// Sets the path of the header to parse.
    void setHFileLocation(const QString& path) { hFileLocation = path; }
    QString getHFileLocation() const { return hFileLocation; }

    /// Sets a second path, kept for callers and not used for parsing.
    void setCBFileLocation(const QString& path) { cbFileLocation = path; }
    QString getCBFileLocation() const { return cbFileLocation; }

    /// Parses the header and emits finished(). Call either this or parse(), once.
    void generate();

    /// Parses a text, whose first line has the number `firstLine`, and returns its faults in the order
    /// in which generate() would fail with them. The schema then lacks what could not be parsed.
    QList<SchemaFault> parse(const QString& text, int firstLine = 1);

    /// Returns the charger's global settings: shared, edited in place, owned by the generator.
    StructSettings* getGlobalSettings() const { return globalSettings; }

    /// Returns the chemistry templates in header order; owned by the generator, never edited.
    QList<StructSettings*> getChemistrySettings() const { return chemistrySettings; }

    /// Returns a deep copy of the first chemistry with exactly this name, without values: the
    /// caller calls buildFormulaTrees() on it. Null for an unknown chemistry.
    std::unique_ptr<StructSettings> getProfileSettings(const QString& chemistry) const;

    /// Returns true if the schema has a chemistry with exactly this name.
    bool hasChemistry(const QString& chemistry) const;

    /// Returns the word address at which profiles start in the charger's memory.
    int getProfileStartWordAddress() const { return profileStartWordAddress; }

    /// Write debug dumps to standard output.
    void printAllSettings() const;
    static void printString(const QString& text);
    static void printStringList(const QStringList& texts);

signals:
    /// Emitted when the header has been parsed.
    void finished();

private:
    QString getHeaderFile() const;
    QList<SchemaFault> parseProfileStartAddress(
        const std::optional<HeaderText::StartAddress>& address);
    QList<SchemaFault> processStruct(const HeaderText::Struct& structure);
    static std::optional<SchemaFault> processStructLine(const HeaderText::Line& line,
                                                        StructSettings* settings,
                                                        QList<StructSetting*>* members);
    const StructSettings* findChemistry(const QString& name) const;
    static void printStruct(const StructSettings* settings);

    QString hFileLocation;
    QString cbFileLocation;
    StructSettings* globalSettings = nullptr;
    QList<StructSettings*> chemistrySettings;
    int profileStartWordAddress = 0;
};
} // namespace HParser
