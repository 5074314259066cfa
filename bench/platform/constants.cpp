#include <constsetting.h>
#include <datadefault.h>

// The head unit fills these in when it is created.
qint32 ConstSetting::clientModelId = 0;
unsigned char DataDefault::panelLightStepRange = 0;
QList<unsigned char> DataDefault::panelLightStepValueList;
