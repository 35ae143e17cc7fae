#pragma once

#include <QMap>
#include <QObject>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

#include <algorithm>
#include <optional>

class QIODevice;

/// Reads a bundle file: a key/value block, embedded text files and their MD5 checksums.
///
/// The layout, line by line (see docs/file-formats/bundle.md):
///
///     ...
///     KEY = VALUE
///     ...
///     /\/\/\ any text /\/\/\      opens section 0
///     (lines of the file)
///     /\/\/\ any text /\/\/\      closes it
///     ...                         further sections; the last one holds the checksums
class KelvaronBundle : public QObject
{
    Q_OBJECT

public:
    /// The fixed order of the first embedded files.
    enum Section : int
    {
        DEVICE_DESCRIPTION = 0,
        SCHEMA_HEADER = 1,
        FIRMWARE_IMAGE = 2,                 ///< Intel HEX
        DEVICE_DESCRIPTION_NO_OVERWRITE = 3 ///< to keep the charger's profiles in a flash
    };

    static constexpr QLatin1String keyBlockLine{"..."}; ///< opens and closes the key/value block
    static constexpr QLatin1String versionKey{"VERSION"};
    static constexpr QLatin1String minimumVersionKey{
        "MIN_SOFTWARE_VERSION_REQUIRED"}; ///< of the editor

    /// A device description, a schema header and the checksums: a bundle with fewer is unusable.
    static constexpr int fewestSections = 3;

    /// Creates the object; reads nothing yet.
    explicit KelvaronBundle(QString path);

    /// Reads the key/value block; with an unreadable file, every key is empty. A malformed line is
    /// a fatal assertion.
    void parseKeyValuePairs();

    /// Returns false if parseKeyValuePairs() would find a malformed line in this file.
    static bool hasSoundKeyBlock(const QString& path);

    /// A key and its value.
    using KeyValue = QPair<QString, QString>;

    /// Returns the key and value in a line of the key/value block, both trimmed; nothing for a
    /// malformed line. Either may be empty: "KEY = " has an empty value, while "KEY =" is
    /// malformed.
    static std::optional<KeyValue> parseKeyLine(const QString& line);

    /// Returns the value; empty for a missing key.
    QString valueFromKey(const QString& key) const { return keyValuePairs.value(key); }

    /// Returns the whole key/value block.
    QMap<QString, QString> getKeyValuePairs() const { return keyValuePairs; }

    /// Reads the sections and verifies their checksums. Returns false if the file cannot be opened
    /// or a checksum does not match ("Match failed!" on standard output); the sections found can
    /// still be used.
    bool parseBundle();

    /// Finds the sections in the text of a bundle, as UTF-8 without carriage returns.
    void cutSections(const QByteArray& text);

    /// Returns how many sections were found, including the checksums.
    int getNumFiles() const { return files.size(); }

    /// Returns the numbers, counted from 0, of the lines that open and close each section; the last
    /// number is missing if the last section is not closed.
    QVector<int> getSectionLines() const { return sectionLines; }

    /// Returns the text of section `index`, each line ended by a line feed. An index out of range
    /// is a fatal assertion.
    QString getFile(int index) const;

    /// Returns the opening marker line of section `index`, unchanged.
    QString getMarker(int index) const;

    /// Returns the text between the ends of that line, trimmed.
    QString getName(int index) const;

    /// Writes section `index` to `path`, completely or not at all; returns false if it cannot be
    /// written. An index out of range is a fatal assertion.
    bool saveFile(int index, const QString& path) const;

    /// Returns the bytes that saveFile() writes. An index out of range is a fatal assertion.
    QByteArray bytesOf(int index) const;

    /// Returns the number of usable embedded files: all sections but the last, which contains the
    /// checksums.
    int getNumEmbedded() const { return std::max(0, getNumFiles() - 1); }

    /// Returns true for a line that opens or closes a section.
    static bool matchesStartEndLine(const QString& line);

    /// Returns the version of any bundle file: its key VERSION, else the first dotted number in its
    /// file name, else "0". A VERSION is returned unchanged, whether it is a dotted version or not.
    static QString getBundleVersion(const QString& path);

    /// Returns the checksum of a section's text: lower-case hexadecimal MD5 of its UTF-8 bytes.
    static QString checksum(const QString& text);

    /// Returns the checksum of section `index`. An index out of range is a fatal assertion.
    QString checksumOf(int index) const;

    /// A line of the last section, which has a checksum for each of the others.
    struct ChecksumLine
    {
        int number = 0; ///< number of the line, counted from 0
        QString text;
    };

    /// Returns the lines of the last section that are not empty. REQUIRES: a bundle with sections.
    QVector<ChecksumLine> checksumLines() const;

    /// Returns the line that opens and closes the section of a file of that name.
    static QString markerLine(const QString& name);

    /// The key/value block of a bundle.
    struct KeyBlock
    {
        int firstLine = 0; ///< the number of its first line, counted from 1; 0 without a block
        QStringList lines;
        bool isClosed = false;
    };

    /// Reads up to the end of the block, which is at the beginning of any large bundle.
    static KeyBlock readKeyBlock(QIODevice& device);

private:
    /// The position of an embedded file in `content`.
    struct Range
    {
        int start = 0;
        int length = 0;
    };

    void addMarker(int line, int start, int end);
    bool isLastSectionOpen() const { return sectionLines.size() % 2 != 0; }
    bool checksumsMatch() const;

    QString bundleFilePath;
    QByteArray content; ///< the whole bundle as UTF-8, lines ended by a line feed
    QVector<int>
        sectionLines; ///< line numbers of the markers that open and close the sections, in turn; from 0
    QVector<Range> files;
    QStringList markers;
    QMap<QString, QString> keyValuePairs;
};
