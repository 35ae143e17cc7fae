#include "base/linecapture.h"

namespace
{
constexpr int mostLines = 100;

LineCapture*& innermost()
{
    static LineCapture* capture = nullptr;
    return capture;
}
} // namespace

LineCapture::LineCapture() : outer(innermost())
{
    innermost() = this;
}

LineCapture::~LineCapture()
{
    innermost() = outer;
}

bool LineCapture::take(const QString& line)
{
    LineCapture* capture = innermost();
    if (capture == nullptr) {
        return false;
    }
    if (capture->kept.size() < mostLines) {
        capture->kept.append(line);
    }
    return true;
}
