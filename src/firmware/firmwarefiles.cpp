#include "firmware/firmwarefiles.h"

#include "KelvaronBundle/kelvaronbundle.h"
#include "firmware/stringmanipulation.h"
#include "standardoutput.h"
#include "textfile.h"

#include <QFile>
#include <QFileInfo>

#include <stdexcept>

namespace FirmwareTool
{
namespace
{
const QString imageFile = QStringLiteral("hexToFlash.hex");
const QString deviceFile = QStringLiteral("./device.txt");
const QString overwriteFile = QStringLiteral("./device_overwrite.txt");

void remove(const QString& path)
{
    QFile::remove(path);
    const QFileInfo info(path);
    if (info.exists() || info.isSymLink()) {
        throw std::runtime_error("a file of an earlier flash cannot be removed");
    }
}

void save(const KelvaronBundle& bundle, KelvaronBundle::Section part, const QString& path)
{
    const int numParts = bundle.getNumFiles() - 1; // the last section holds the checksums
    if (part < numParts) {
        bundle.saveFile(part, path);
    }
}

void copyToWorkingFolder(const QString& path)
{
    const QString target = QStringLiteral("./") + StringManipulation::getFileName(path);
    QFile source(path);
    if (!QFileInfo::exists(target) && source.open(QIODevice::ReadOnly)) {
        TextFile::writeBytes(target, source.readAll());
    }
}
} // namespace

QString FirmwareFiles::image()
{
    return imageFile;
}

void FirmwareFiles::extract(const QString& firmwarePath, bool overwriteProfiles)
{
    KelvaronBundle bundle(firmwarePath);
    bundle.parseBundle(); // a mismatch is only reported on standard output
    for (const QString& path : {imageFile, deviceFile, overwriteFile}) {
        remove(path);
    }
    save(bundle, KelvaronBundle::FIRMWARE_IMAGE, QStringLiteral("./") + imageFile);
    save(bundle, KelvaronBundle::DEVICE_DESCRIPTION, overwriteFile);
    if (overwriteProfiles) {
        printLine(QStringLiteral("Overwriting Profiles"));
        save(bundle, KelvaronBundle::DEVICE_DESCRIPTION, deviceFile);
    } else {
        printLine(QStringLiteral("Not overwriting profiles"));
        save(bundle, KelvaronBundle::DEVICE_DESCRIPTION_NO_OVERWRITE, deviceFile);
    }
    copyToWorkingFolder(firmwarePath);
}

void FirmwareFiles::restoreDeviceDescription()
{
    if (QFileInfo::exists(overwriteFile)) {
        QFile::remove(deviceFile);
        QFile::rename(overwriteFile, deviceFile);
    }
}
} // namespace FirmwareTool
