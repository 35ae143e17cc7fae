#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

class PortLock;
class PortTurns;

/// The use of a serial port, from its request to this object's end. Turns on one port follow each other
/// in the order of their requests: two runs of the uploader at once would mix their work in the charger.
/// From its beginning on a turn keeps other programs from the port (see PortLock).
class PortTurn : public QObject
{
    Q_OBJECT

public:
    /// Requests the port. `doing` says for the user what is done with it ("Writing profiles").
    PortTurn(const QString& portName, const QString& doing, QObject* parent);
    ~PortTurn() override;

    /// Calls `begin` once: at once, or from the event loop when every earlier turn on this port has
    /// ended. When another program has the port by then, `refuse` is called in its place, with that
    /// program for the user; the turn is to be deleted then. Neither is called any more when this object
    /// has gone.
    void whenFree(std::function<void()> begin,
                  std::function<void(const QString& holder)> refuse = {});

    QString getPort() const { return port; }

    /// What is done with which port, and whether it still waits.
    QString describe() const;

private:
    friend class PortTurns;

    void beginWhenFirst();

    QString port;
    QString doing;
    std::function<void()> beginning; ///< empty once it was called
    std::function<void(const QString&)> refusal;
    std::unique_ptr<PortLock> lock; ///< from the beginning on
    QPointer<PortTurns> turns;      ///< gone when the program ends
};
