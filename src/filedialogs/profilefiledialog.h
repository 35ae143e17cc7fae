#pragma once

#include <QObject>
#include <QString>

class QWidget;

/// Lets the user choose a file of profiles to load or to save, and remembers its folder for the next
/// time.
///
/// Both questions return an empty text when the user cancels, or when the parent widget goes away
/// meanwhile; this object may be gone with it then.
class ProfileFileDialog : public QObject
{
    Q_OBJECT

public:
    /// What happens to the name of a file to save that has no suffix.
    enum class SuffixRule
    {
        KEEP_NAME,
        ADD_SUFFIX
    };

    /// `fileFormat` is shown to the user, "XML"; in lower case it is the suffix. `dialogParent` is
    /// borrowed and outlives this object.
    ProfileFileDialog(QWidget* dialogParent, const QString& fileFormat, SuffixRule rule);

    /// Asks for a file that exists.
    QString askFileToLoad();

    /// Asks for a file to write. One that exists is returned only when the user agrees to replace it.
    QString askFileToSave();

    /// Makes the next dialog open in this file's folder.
    void rememberFolder(const QString& fileName);

    /// Makes the next dialog for saving offer this file's name.
    void rememberName(const QString& fileName);

private:
    QString filter() const;
    bool isReplaced(const QString& fileName) const;

    QWidget* parentWidget;
    QString format;
    SuffixRule suffixRule;
    QString folder = QStringLiteral("saved_profiles");
    QString name; ///< without a folder
};
