#pragma once

#include <QList>
#include <QObject>
#include <QStringList>

class PortTurn;

/// Keeps track of the serial ports that this program uses or waits for. There is one such object, a
/// child of the application object, because a port is shared by everything the process does.
class PortTurns : public QObject
{
    Q_OBJECT

public:
    /// REQUIRES: an application object.
    static PortTurns& ofApplication();

    /// Returns a text for the user for each running and waiting turn, in the order of their
    /// requests.
    QStringList descriptions() const;

    /// Returns whether this program uses the port or waits for it.
    bool isInUse(const QString& portName) const;

signals:
    /// Emitted when descriptions() has changed.
    void changed();

private:
    friend class PortTurn;

    explicit PortTurns(QObject* application);

    void add(PortTurn* turn);
    void remove(PortTurn* turn);
    bool isFirst(const PortTurn& turn) const;

    QList<PortTurn*> turns; ///< in the order of their requests, not owned
};
