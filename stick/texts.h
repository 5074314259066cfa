#pragma once

#include <QCoreApplication>

namespace stick {

/// The context of every text of the tool that a translation may replace: Texts::tr().
class Texts
{
    Q_DECLARE_TR_FUNCTIONS(ProductionStick)
};

} // namespace stick
