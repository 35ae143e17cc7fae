#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QList>

/// Builds the bytes of a bundle file part by part; can also forge a wrong checksum.
class BundleText
{
public:
    /// A key of the key/value block; the block is written once there is a key.
    BundleText& key(const QByteArray& name, const QByteArray& value)
    {
        return keyLine(name + " = " + value);
    }

    /// Any line in the key/value block.
    BundleText& keyLine(const QByteArray& line)
    {
        keyLines += line + "\n";
        return *this;
    }

    /// One more section with this text, whole lines.
    BundleText& section(const QByteArray& text)
    {
        sections.append(text);
        return *this;
    }

    /// The checksum of section `index` will be that of another text.
    BundleText& wrongChecksum(int index)
    {
        wrongSection = index;
        return *this;
    }

    QByteArray bytes() const
    {
        QByteArray result = keyLines.isEmpty() ? QByteArray() : "...\n" + keyLines + "...\n";
        QByteArray checksums;
        for (int i = 0; i < sections.size(); ++i) {
            result += marked(sections.at(i));
            checksums += md5(i == wrongSection ? sections.at(i) + "!" : sections.at(i)) + "\n";
        }
        return result + marked(checksums);
    }

    /// The line that opens and closes a section.
    static QByteArray marker() { return "/\\/\\/\\ name /\\/\\/\\\n"; }

    static QByteArray marked(const QByteArray& text) { return marker() + text + marker(); }

    static QByteArray md5(const QByteArray& text)
    {
        return QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex();
    }

private:
    QByteArray keyLines;
    QList<QByteArray> sections;
    int wrongSection = -1;
};

namespace Samples
{
/// The first line of the schema is line 1 of the file.
inline QByteArray globalStruct()
{
    return "#define PROFILESTARTADDRESS 0x400\n"
           "struct Global { // Settings : \"Global\", global\n"
           "unsigned char type; // num, auto, 1, 1, x1, 0, \"type\", \"\", A, 1, -1, basic\n"
           "}\n";
}

/// A chemistry; `members` follow the ones that every chemistry needs, from line 11 on if it follows
/// globalStruct().
inline QByteArray chemistry(const QByteArray& members = {})
{
    return "struct Cell { // Settings : \"Cell\", instantiable\n"
           "unsigned char type; // num, auto, 2, 2, x1, 0, \"type\", \"\", A, 2, -1, basic\n"
           "char title[8]; // string, auto, \"Title\", A, \"one\", 0, basic\n"
           "char subtitle[8]; // string, auto, \"Subtitle\", A, \"two\", 1, basic\n"
           "unsigned char active; // bool, 1, \"active\", A, 0, -1, basic\n"
           "unsigned char isDefault; // bool, 1, \"default\", A, 0, -1, basic\n"
           "unsigned char modifiable; // bool, 6, \"modifiable\", A, 1, -1, basic\n"
           + members + "}\n";
}

inline constexpr int firstExtraMemberLine = 12;

inline QByteArray schema()
{
    return globalStruct() + chemistry();
}

inline QByteArray device()
{
    return "name = sample\n";
}

/// A bundle that starts the editor; its version is in its file name.
inline BundleText bundle(const QByteArray& schemaText = schema(),
                         const QByteArray& deviceText = device())
{
    return BundleText().section(deviceText).section(schemaText);
}
} // namespace Samples
