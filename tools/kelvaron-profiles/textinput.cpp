#include "textinput.h"

#include "KelvaronBundle/kelvaronbundle.h"
#include "base/textfile.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTextCodec>

bool TextInput::read(const QString& path)
{
    content.clear();
    problem.clear();

    if (QFileInfo(path).isDir()) {
        problem = QStringLiteral("is a directory");
        return false;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        problem = QStringLiteral("cannot be read: %1").arg(file.errorString());
        return false;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        problem = QStringLiteral("cannot be read: %1").arg(file.errorString());
        return false;
    }
    if (bytes.contains('\0')) {
        problem = QStringLiteral("is not a text file: it contains a zero byte");
        return false;
    }
    QTextCodec::ConverterState state;
    QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0) {
        problem = QStringLiteral("is not UTF-8 text");
        return false;
    }
    text.remove(QLatin1Char('\r'));

    const QStringList lines = TextFile::splitLines(text);
    for (int i = 0; i < lines.size(); ++i) {
        if (KelvaronBundle::matchesStartEndLine(lines.at(i))) {
            problem = QStringLiteral("line %1 would end its section of the bundle: %2")
                          .arg(i + 1)
                          .arg(lines.at(i));
            return false;
        }
    }
    content = text.isEmpty() || text.endsWith(QLatin1Char('\n')) ? text : text + QLatin1Char('\n');
    return true;
}
