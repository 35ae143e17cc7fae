#include "transfer/portturn.h"

#include "transfer/portturns.h"

#include <utility>

PortTurn::PortTurn(const QString& portName, const QString& what, QObject* parent)
    : QObject(parent), port(portName), doing(what), turns(&PortTurns::ofApplication())
{
    turns->add(this);
}

PortTurn::~PortTurn()
{
    if (turns != nullptr) {
        turns->remove(this);
    }
}

void PortTurn::whenFree(std::function<void()> begin)
{
    beginning = std::move(begin);
    beginWhenFirst();
}

void PortTurn::beginWhenFirst()
{
    if (!beginning || turns == nullptr) {
        return;
    }
    const bool isFirst = turns->isFirst(*this);
    const std::function<void()> begin = isFirst ? std::exchange(beginning, {}) : nullptr;
    emit turns->changed();
    if (begin) {
        begin(); // last: it may end this turn
    }
}

QString PortTurn::describe() const
{
    const QString text = QStringLiteral("%1 through %2").arg(doing, port);
    return beginning ? text + QStringLiteral(" (waiting for the port)") : text;
}
