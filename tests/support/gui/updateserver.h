#pragma once

#include "support/bundletext.h"
#include "support/gui/httpserver.h"
#include "updatecheck/newfirmwarechecker.h"

/// Where the program asks for the newest version.
inline const QString infoPath = "/downloads/latest_bundle_info_new.xml";

/// The program's update server while this object exists.
class UpdateServer : public HttpServer
{
public:
    UpdateServer() { NewFirmwareChecker::NewFirmwareChecker::setServer(address()); }
    ~UpdateServer() override { NewFirmwareChecker::NewFirmwareChecker::setServer({}); }

    /// Offers this version, with the address of its bundle.
    void offer(const QString& version, const QString& link)
    {
        answer(infoPath, {200, "<bundle><current_version>" + version.toUtf8()
                                   + "</current_version><download_link>" + link.toUtf8()
                                   + "</download_link></bundle>"});
    }
};

/// A bundle that names this version.
inline QByteArray bundleOfVersion(const QByteArray& version = "1.10")
{
    return Samples::bundle().key("VERSION", version).bytes();
}
