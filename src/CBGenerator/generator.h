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
/// Any malformation is a fatal assertion; what was being parsed (file, number of the line, line) is
/// printed on standard output.
class Generator : public QObject
{
    Q_OBJECT

public:
    explicit Generator(QObject* parent);

    /// Path of the header to parse.
    void setHFileLocation(const QString& path) { hFileLocation = path; }
    QString getHFileLocation() const { return hFileLocation; }

    /// A second path kept for callers; parsing does not use it.
    void setCBFileLocation(const QString& path) { cbFileLocation = path; }
    QString getCBFileLocation() const { return cbFileLocation; }

    /// Parses the header and emits finished(). Called once, or parse() in its place.
    void generate();

    /// The same for a text, whose lines are counted from `firstLine`, without an end: returns
    /// everything that is wrong, in the order in which generate() meets it. A schema with a fault has
    /// settings missing.
    QList<SchemaFault> parse(const QString& text, int firstLine = 1);

    /// The charger's global settings: shared, edited in place, owned by the generator.
    StructSettings* getGlobalSettings() const { return globalSettings; }

    /// The chemistry templates in header order; owned by the generator, never edited.
    QList<StructSettings*> getChemistrySettings() const { return chemistrySettings; }

    /// A deep copy of the first chemistry of exactly this name, without values: the caller calls
    /// buildFormulaTrees() on it. None for an unknown chemistry.
    std::unique_ptr<StructSettings> getProfileSettings(const QString& chemistry) const;

    /// True when the schema holds a chemistry of exactly this name.
    bool hasChemistry(const QString& chemistry) const;

    /// Where profiles start in the charger's memory, in words.
    int getProfileStartWordAddress() const { return profileStartWordAddress; }

    /// Debug dumps to standard output.
    void printAllSettings() const;
    static void printString(const QString& text);
    static void printStringList(const QStringList& texts);

signals:
    /// The header has been parsed.
    void finished();

private:
    QList<SchemaFault> readStartAddress(const std::optional<HeaderText::StartAddress>& address);
    QList<SchemaFault> addStruct(const HeaderText::Struct& structure);
    const StructSettings* findChemistry(const QString& name) const;
    static void printStruct(const StructSettings* settings);

    QString hFileLocation;
    QString cbFileLocation;
    StructSettings* globalSettings = nullptr;
    QList<StructSettings*> chemistrySettings;
    int profileStartWordAddress = 0;
};
} // namespace HParser
