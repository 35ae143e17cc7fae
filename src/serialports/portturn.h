#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

class PortLock;
class PortTurns;

/// One use of a serial port, from the request to the destruction of this object. Turns on the same
/// port follow each other in the order of their requests: two runs of the uploader at once would
/// mix their data in the charger. Once it has begun, a turn locks the port against other programs
/// (see PortLock).
class PortTurn : public QObject
{
    Q_OBJECT

public:
    /// Requests the port. `doing` describes for the user what it is used for ("Writing profiles").
    PortTurn(const QString& portName, const QString& doing, QObject* parent);
    ~PortTurn() override;

    /// Calls `begin` once: immediately, or from the event loop after every earlier turn on this
    /// port has ended. If another program has the port by then, calls `refuse` instead, with the
    /// name of that program for a message; delete the turn then. Neither is called after this
    /// object was destroyed.
    void whenFree(std::function<void()> begin,
                  std::function<void(const QString& holder)> refuse = {});

    QString getPort() const { return port; }

    /// Returns what is done with which port, and whether the turn is still waiting.
    QString describe() const;

private:
    friend class PortTurns;

    void beginWhenFirst();

    QString port;
    QString doing;
    std::function<void()> beginning; ///< empty once called
    std::function<void(const QString&)> refusal;
    std::unique_ptr<PortLock> lock; ///< once the turn has begun
    QPointer<PortTurns> turns;      ///< null once the program is ending
};
