#pragma once

#include "base/buildconstants.h"
#include "installation/installation.h"
#include "support/bundletext.h"
#include "support/filestest.h"

#include <optional>

/// The editor's folder, empty but for the uploader, as the working directory.
class InstallationTest : public FilesTest
{
protected:
    InstallationTest()
    {
        EXPECT_TRUE(QDir(program.path()).mkdir(Installation::folderName));
        filesFolder = program.path() + '/' + Installation::folderName;
        EXPECT_TRUE(Installation::enter(program.path()));
        writeFile(BuildConstants::uploaderFileName, "#!/bin/sh\n");
    }

    void writeBundle(const QString& name, const BundleText& bundle = Samples::bundle()) const
    {
        writeFile(name, bundle.bytes());
    }

    /// Takes the newest bundle into use and extracts its files.
    Installation::Outcome extractNewest()
    {
        EXPECT_TRUE(installation.chooseBundle());
        return installation.extract();
    }

    WorkingFolder program; ///< where the executable would be
    Installation installation;
};
