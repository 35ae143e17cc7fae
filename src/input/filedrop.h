#pragma once

#include <QObject>

class QMimeData;
class QWidget;

/// Lets the user drop a file on a window. While a dialog is open nothing is taken.
class FileDrop : public QObject
{
    Q_OBJECT

public:
    /// `window` becomes the parent.
    explicit FileDrop(QWidget* window);

public slots:
    /// Whether files are taken; they are from the start.
    void setEnabled(bool on) { isEnabled = on; }

signals:
    /// The file, by its path, after the program that it was dragged from has been answered.
    void dropped(const QString& fileName);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString fileOf(const QMimeData* data) const;

    bool isEnabled = true;
};
