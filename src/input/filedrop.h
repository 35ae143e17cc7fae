#pragma once

#include <QObject>

class QMimeData;
class QWidget;

/// Lets the user drop a file on a window. While a dialog is open, no file is accepted.
class FileDrop : public QObject
{
    Q_OBJECT

public:
    /// `window` becomes the parent.
    explicit FileDrop(QWidget* window);

public slots:
    /// Sets whether files are accepted; they are by default.
    void setEnabled(bool on) { isEnabled = on; }

signals:
    /// Emitted with the path of the file, after the source of the drag has got its answer.
    void dropped(const QString& fileName);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString fileOf(const QMimeData* data) const;

    bool isEnabled = true;
};
