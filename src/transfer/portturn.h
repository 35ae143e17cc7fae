#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class PortTurns;

/// The use of a serial port, from its request to this object's end. Turns on one port follow each other
/// in the order of their requests: two runs of the uploader at once would mix their work in the charger.
class PortTurn : public QObject
{
    Q_OBJECT

public:
    /// Requests the port. `doing` says for the user what is done with it ("Writing profiles").
    PortTurn(const QString& portName, const QString& doing, QObject* parent);
    ~PortTurn() override;

    /// Calls `begin` once: at once, or from the event loop when every earlier turn on this port has
    /// ended. It is not called any more when this object has gone.
    void whenFree(std::function<void()> begin);

    QString getPort() const { return port; }

    /// What is done with which port, and whether it still waits.
    QString describe() const;

private:
    friend class PortTurns;

    void beginWhenFirst();

    QString port;
    QString doing;
    std::function<void()> beginning; ///< empty once it was called
    QPointer<PortTurns> turns;       ///< gone when the program ends
};
