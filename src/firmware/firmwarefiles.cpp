#include "firmware/firmwarefiles.h"

#include "KelvaronBundle/bundlecheck.h"
#include "KelvaronBundle/kelvaronbundle.h"
#include "base/standardoutput.h"
#include "base/textfile.h"
#include "firmware/stringmanipulation.h"

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

/// Returns false for an empty part, too: an empty image would leave the charger erased.
bool hasPart(const KelvaronBundle& bundle, KelvaronBundle::Section part)
{
    return part < bundle.getNumEmbedded() && !bundle.bytesOf(part).isEmpty();
}

/// Renames the device description for transfers until the flash has ended. If the bundle's own
/// description cannot be written, the one in use is kept under the other name.
void setDeviceDescriptionAside()
{
    if (QFileInfo::exists(overwriteFile)) {
        remove(deviceFile);
    } else if (QFileInfo::exists(deviceFile) && !QFile::rename(deviceFile, overwriteFile)) {
        throw std::runtime_error("the device description cannot be replaced");
    }
}

bool isUsableByTheNextStart(KelvaronBundle& bundle, const QString& path)
{
    if (!BundleCheck::isSafe(path)) {
        return false;
    }
    bundle.parseKeyValuePairs();
    return BundleCheck::isUsable(bundle);
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

FirmwareFiles::Extraction FirmwareFiles::extract(const QString& firmwarePath,
                                                 bool overwriteProfiles)
{
    const KelvaronBundle::Section description =
        overwriteProfiles ? KelvaronBundle::DEVICE_DESCRIPTION
                          : KelvaronBundle::DEVICE_DESCRIPTION_NO_OVERWRITE;
    KelvaronBundle bundle(firmwarePath);
    bundle.parseBundle(); // a mismatch is only reported on standard output
    if (!hasPart(bundle, KelvaronBundle::FIRMWARE_IMAGE)) {
        return Extraction::IMAGE_MISSING;
    }
    if (!hasPart(bundle, KelvaronBundle::DEVICE_DESCRIPTION) || !hasPart(bundle, description)) {
        return Extraction::DEVICE_DESCRIPTION_MISSING;
    }
    remove(imageFile);
    setDeviceDescriptionAside();
    bundle.saveFile(KelvaronBundle::FIRMWARE_IMAGE, QStringLiteral("./") + imageFile);
    bundle.saveFile(KelvaronBundle::DEVICE_DESCRIPTION, overwriteFile);
    printLine(overwriteProfiles ? QStringLiteral("Overwriting Profiles")
                                : QStringLiteral("Not overwriting profiles"));
    bundle.saveFile(description, deviceFile);
    if (isUsableByTheNextStart(bundle, firmwarePath)) {
        copyToWorkingFolder(firmwarePath);
    }
    return Extraction::DONE;
}

void FirmwareFiles::restoreDeviceDescription()
{
    if (QFileInfo::exists(overwriteFile)) {
        QFile::remove(deviceFile);
        QFile::rename(overwriteFile, deviceFile);
    }
}
} // namespace FirmwareTool
