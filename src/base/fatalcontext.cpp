#include "base/fatalcontext.h"

#include <QStringList>

namespace
{
FatalContext*& innermost()
{
    static FatalContext* context = nullptr;
    return context;
}
} // namespace

FatalContext::FatalContext() : outer(innermost())
{
    innermost() = this;
}

FatalContext::~FatalContext()
{
    innermost() = outer;
}

QString FatalContext::describeAll()
{
    QStringList lines;
    for (const FatalContext* context = innermost(); context != nullptr; context = context->outer) {
        lines.prepend(context->describe());
    }
    return lines.join(QLatin1Char('\n'));
}

QString FatalContext::blamedFile()
{
    QString outermost;
    for (const FatalContext* context = innermost(); context != nullptr; context = context->outer) {
        const QString file = context->file();
        if (!file.isEmpty()) {
            outermost = file;
        }
    }
    return outermost;
}
