#include "CBGenerator/visualorder.h"

#include "CBGenerator/structsetting.h"

#include <QVector>

#include <cmath>

QList<HParser::StructSetting*> HParser::sortByVisualIndex(const QList<StructSetting*>& settings)
{
    QVector<QList<StructSetting*>> settingsAt(settings.size());
    for (StructSetting* setting : settings) {
        const std::optional<double> position = setting->visualPosition();
        if (position && *position >= 0 && *position < settings.size()
            && *position == std::floor(*position)) {
            settingsAt[static_cast<int>(*position)].append(setting);
        }
    }
    QList<StructSetting*> sorted;
    for (const QList<StructSetting*>& group : qAsConst(settingsAt)) {
        sorted.append(group);
    }
    return sorted;
}
