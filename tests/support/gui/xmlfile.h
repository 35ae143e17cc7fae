#pragma once

#include "support/files.h"
#include "support/gui/editorwindow.h"
#include "xmlformat/xmlmanager.h"

#include <QTextCodec>
#include <QTextDocument>
#include <QTextDocumentFragment>

/// Profile files in a folder that is deleted with the test.
class XmlFileTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(folder.isValid()); }

    QString pathOf(const QString& name) const { return folder.filePath(name); }

    QString writeFile(const QString& name, const QString& text) const
    {
        ::writeFile(pathOf(name), text.toUtf8());
        return pathOf(name);
    }

    /// Returns the file's bytes, which must be UTF-8.
    QString readFile(const QString& name) const
    {
        return QString::fromUtf8(contentOf(pathOf(name)));
    }

    QStringList filesInFolder() const
    {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir folder;
};

/// An editor that saves and loads, without an installation.
class XmlEditor : public EditorWindow
{
public:
    using EditorWindow::EditorWindow;

    XMLGeneratorParser::XMLManager& xml = *managers.xml;
};

/// What a user reads in a message box.
inline QString shownText(const QMessageBox& box)
{
    const bool isRich = box.textFormat() == Qt::RichText
                        || (box.textFormat() == Qt::AutoText && Qt::mightBeRichText(box.text()));
    return isRich ? QTextDocumentFragment::fromHtml(box.text()).toPlainText() : box.text();
}

/// The answer to a message box of this title that shows all these words.
inline DialogScript::Interaction messageWith(const QString& title, const QStringList& words)
{
    return [=](QWidget& dialog) {
        auto* box = qobject_cast<QMessageBox*>(&dialog);
        if (box == nullptr) {
            ADD_FAILURE() << "not a message box: " << dialog.metaObject()->className();
            return;
        }
        EXPECT_EQ(box->windowTitle(), title);
        for (const QString& word : words) {
            EXPECT_TRUE(contains(shownText(*box), word));
        }
        box->accept();
    };
}

/// While this object exists, the system has another encoding for texts and another locale for
/// numbers.
class ForeignLocale
{
public:
    ForeignLocale()
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO 8859-1"));
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    }
    ~ForeignLocale()
    {
        QTextCodec::setCodecForLocale(nullptr);
        QLocale::setDefault(QLocale::system());
    }
    ForeignLocale(const ForeignLocale&) = delete;
    ForeignLocale& operator=(const ForeignLocale&) = delete;
};
