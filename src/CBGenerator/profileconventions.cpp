#include "CBGenerator/profileconventions.h"

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"

QStringList HParser::ProfileConventions::flags()
{
    return {activeFlag, defaultFlag, modifiableFlag};
}

bool HParser::ProfileConventions::hasFlag(const StructSettings& settings, const QString& name)
{
    const StructSetting* setting = settings.getStructSettingByDescriptiveName(name);
    return setting != nullptr && setting->settingType == StructSetting::BOOL;
}

bool HParser::ProfileConventions::hasType(const StructSettings& settings)
{
    const StructSetting* first = settings.getOriginalOrderStructSettings().value(0);
    return first != nullptr && first->descriptiveName == ProfileConventions::type
           && first->settingType == StructSetting::NUM;
}
