#pragma once

#include "KelvaronBundle/kelvaronbundle.h"
#include "support/filestest.h"
#include "support/standardoutputcapture.h"

/// A test with the file of a bundle and the parts of such files.
class KelvaronBundleTest : public FilesTest
{
protected:
    KelvaronBundleTest() { filesFolder = folder.path(); }

    /// Writes a bundle and returns the path of its file.
    QString written(const QByteArray& bytes, const QString& name = bundleName) const
    {
        writeFile(name, bytes);
        return pathOf(name);
    }

    /// Returns the result of the checksums; what is printed must agree.
    bool verifies(const QByteArray& bytes) const
    {
        KelvaronBundle bundle(written(bytes));
        const StandardOutputCapture output;
        const bool matches = bundle.parseBundle();
        EXPECT_EQ(output.text(), matches ? "Checksums in bundle OK\n" : "Match failed!\n");
        return matches;
    }

    /// The value of a key in the key block.
    QString value(const QByteArray& bytes, const QString& key) const
    {
        KelvaronBundle bundle(written(bytes));
        bundle.parseKeyValuePairs();
        return bundle.valueFromKey(key);
    }

    QString versionOf(const QString& name, const QByteArray& bytes = {}) const
    {
        return KelvaronBundle::getBundleVersion(written(bytes, name));
    }

    QByteArray section(const QByteArray& text) const { return marker + text + marker; }

    static constexpr const char* bundleName = "b.kelvaron";
    const QByteArray marker = "/\\/\\/\\ text /\\/\\/\\\n";
    const QByteArray keys = "...\nVERSION = 1.2.0\nMIN_SOFTWARE_VERSION_REQUIRED = 0.9\n...\n";
    const QByteArray device = "part = x32\nspeed = 9600\n";
    const QByteArray schema = "struct A {\n\n}\n";

    /// The checksums of "device" and "schema" as computed by an independent tool (md5sum).
    const QByteArray deviceSum = "d0bd4485977af05bee2b76740ef03cb7\n";
    const QByteArray schemaSum = "f6b185c0fb26877355b6072e4218bdff\n";

    const QByteArray soundBundle =
        keys + section(device) + section(schema) + section(deviceSum + schemaSum);

private:
    QTemporaryDir folder;
};

using KelvaronBundleDeathTest = KelvaronBundleTest;
