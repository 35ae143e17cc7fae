#pragma once

#include "support/bundleprogram.h"

/// Files with profiles of the small schema, for the commands that read such files.
class ProfilesProgramTest : public BundleProgramTest
{
protected:
    /// The program with the small schema.
    ProgramRun runWithHeader(const QStringList& arguments) const
    {
        return runProfiles(arguments + QStringList{"--header", "schema.in"});
    }

    /// An XML file of these profiles.
    static QByteArray xml(const QByteArray& profiles)
    {
        return "<KelvaronProfiles>\n\t<GlobalSettings>\n\t</GlobalSettings>\n" + profiles
               + "</KelvaronProfiles>\n";
    }

    static QByteArray profile(int id, const QByteArray& title, const QByteArray& low = "3",
                              const QByteArray& high = "4", const QByteArray& flags = "true")
    {
        return "\t<profile id=\"" + QByteArray::number(id) + "\" active=\"" + flags
               + "\" default=\"" + flags
               + "\" modifiable=\"true\">\n"
                 "\t\t<chemistry>Cell</chemistry>\n"
                 "\t\t<!-- Chemistry Specific Properties: -->\n"
                 "\t\t<title>"
               + title + "</title>\n\t\t<subtitle>two</subtitle>\n\t\t<low>" + low
               + "</low>\n\t\t<high>" + high + "</high>\n\t</profile>\n";
    }

    /// The HEX file of one profile: "one", "two", active, not default, modifiable, 3 V and 4 V. Made by
    /// hand: 20 bytes in seven words of three, each low byte last, the last word filled up with FF.
    static QByteArray oneProfileHex()
    {
        QByteArray hex = ":020000040000FA\n"
                         ":100800006E6F020000006500000000006F7774004A\n"
                         ":100810000000000005000000FF040300FFFFFF00D0\n";
        for (int address = 0x820; address < 0x900; address += 0x10) {
            const int sum = 0x10 + 0x08 + (address & 0xFF) + 12 * 0xFF;
            hex += ":10" + digits(address, 4) + "00" + QByteArray("FFFFFF00").repeated(4)
                   + digits(-sum & 0xFF, 2) + '\n';
        }
        return hex + ":00000001FF\n";
    }

private:
    static QByteArray digits(int number, int count)
    {
        return QByteArray::number(number, 16).toUpper().rightJustified(count, '0');
    }
};
