#include "serialports/portturn.h"

#include "serialports/portlock.h"
#include "serialports/portturns.h"

#include <utility>

PortTurn::PortTurn(const QString& portName, const QString& what, QObject* parent)
    : QObject(parent), port(portName), doing(what), turns(&PortTurns::ofApplication())
{
    turns->add(this);
}

PortTurn::~PortTurn()
{
    lock.reset(); // before the next turn is notified
    if (turns != nullptr) {
        turns->remove(this);
    }
}

void PortTurn::whenFree(std::function<void()> begin,
                        std::function<void(const QString& holder)> refuse)
{
    beginning = std::move(begin);
    refusal = std::move(refuse);
    beginWhenFirst();
}

void PortTurn::beginWhenFirst()
{
    if (!beginning || turns == nullptr) {
        return;
    }
    std::function<void()> next;
    if (turns->isFirst(*this)) {
        lock = std::make_unique<PortLock>(port);
        if (lock->isFree()) {
            next = std::move(beginning);
        } else if (refusal) {
            next = [refuse = std::move(refusal), holder = lock->holder()] { refuse(holder); };
        }
        beginning = nullptr;
    }
    emit turns->changed();
    if (next) {
        next(); // last, because it may delete this turn
    }
}

QString PortTurn::describe() const
{
    const QString text = QStringLiteral("%1 through %2").arg(doing, port);
    return beginning ? text + QStringLiteral(" (waiting for the port)") : text;
}
