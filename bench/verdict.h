#pragma once

#include "passrecord.h"

#include <QCoreApplication>

#include <optional>

namespace bench {

/// What has come of one unit.
struct Verdict
{
    Q_DECLARE_TR_FUNCTIONS(Verdict)

public:
    QString unit; ///< its name
    std::optional<PassResult> pass; ///< none when the module has found nothing to do
    QVector<Popup> told; ///< what the operator has read

    /// Why the unit is not in order, in a few words; empty when it is.
    QString trouble() const;

    /// The serials that the unit holds now, of those that the pass has stored.
    QVector<UnitValue> serials() const;

    /// Why the same sticks cannot serve the next unit as they have served this one, in a sentence;
    /// empty when they can.
    QString hindrance() const;

private:
    QStringList serialsInPool() const;
};

} // namespace bench
