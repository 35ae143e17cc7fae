#pragma once

#include <QList>
#include <QObject>
#include <QStringList>

class PortTurn;

/// Who uses which serial port in this program, and who waits for one. There is one such object, a child
/// of the application object: a port is shared by everything that the process does.
class PortTurns : public QObject
{
    Q_OBJECT

public:
    /// REQUIRES: an application object.
    static PortTurns& ofApplication();

    /// What is being done and what waits, a text for the user each, in the order of their requests.
    QStringList descriptions() const;

    /// Whether this program uses the port, or is about to.
    bool isInUse(const QString& portName) const;

signals:
    /// descriptions() has changed.
    void changed();

private:
    friend class PortTurn;

    explicit PortTurns(QObject* application);

    void add(PortTurn* turn);
    void remove(PortTurn* turn);
    bool isFirst(const PortTurn& turn) const;

    QList<PortTurn*> turns; ///< in the order of their requests, not owned
};
