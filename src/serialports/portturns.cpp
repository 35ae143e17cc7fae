#include "serialports/portturns.h"

#include "serialports/portturn.h"

#include <QCoreApplication>

#include <algorithm>

PortTurns::PortTurns(QObject* application) : QObject(application) {}

PortTurns& PortTurns::ofApplication()
{
    QCoreApplication* application = QCoreApplication::instance();
    auto* turns = application->findChild<PortTurns*>(QString(), Qt::FindDirectChildrenOnly);
    return turns != nullptr ? *turns : *new PortTurns(application);
}

QStringList PortTurns::descriptions() const
{
    QStringList texts;
    for (const PortTurn* turn : turns) {
        texts.append(turn->describe());
    }
    return texts;
}

bool PortTurns::isInUse(const QString& portName) const
{
    return std::any_of(turns.cbegin(), turns.cend(),
                       [&portName](const PortTurn* turn) { return turn->getPort() == portName; });
}

void PortTurns::add(PortTurn* turn)
{
    turns.append(turn);
    emit changed();
}

void PortTurns::remove(PortTurn* turn)
{
    turns.removeOne(turn);
    const auto next = std::find_if(turns.cbegin(), turns.cend(), [turn](const PortTurn* other) {
        return other->getPort() == turn->getPort();
    });
    if (next != turns.cend()) {
        // From the event loop: the end of the earlier run may not be handled completely yet.
        QMetaObject::invokeMethod(*next, &PortTurn::beginWhenFirst, Qt::QueuedConnection);
    }
    emit changed();
}

bool PortTurns::isFirst(const PortTurn& turn) const
{
    const auto first = std::find_if(turns.cbegin(), turns.cend(), [&turn](const PortTurn* other) {
        return other->getPort() == turn.getPort();
    });
    return first != turns.cend() && *first == &turn;
}
