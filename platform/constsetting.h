#pragma once

#include <QtGlobal>

/// Constants of this head unit, set before the module starts and never changed while it runs.
class ConstSetting
{
public:
    /// Head-unit model; model 7 shows no pop-up for data seen on a tested interface.
    static qint32 clientModelId;
};
