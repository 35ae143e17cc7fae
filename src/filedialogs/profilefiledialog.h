#pragma once

#include <QObject>
#include <QString>

class QWidget;

/// Lets the user choose a file of profiles to load or to save, and remembers its folder for the
/// next time.
///
/// Both functions that ask return an empty text if the user cancels or the parent widget is deleted
/// meanwhile; this object may be deleted with it.
class ProfileFileDialog : public QObject
{
    Q_OBJECT

public:
    /// How to treat the name of a file to save without a suffix.
    enum class SuffixRule
    {
        KEEP_NAME,
        ADD_SUFFIX
    };

    /// `fileFormat`, such as "XML", is shown to the user; in lower case it is the suffix.
    /// `dialogParent` is borrowed and outlives this object.
    ProfileFileDialog(QWidget* dialogParent, const QString& fileFormat, SuffixRule rule);

    /// Asks for an existing file.
    QString askFileToLoad();

    /// Asks for a file to write. Returns an existing file only if the user agrees to replace it.
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
    QString lastUsedDirectory = QStringLiteral("saved_profiles");
    QString name; ///< without a folder
};
