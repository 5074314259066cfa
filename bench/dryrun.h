#pragma once

#include "options.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTemporaryDir>

namespace bench {

/**
 * Copies of everything that a pass reads or changes: the unit, the sticks, the flash. They are gone
 * with the object.
 */
class DryRun
{
    Q_DECLARE_TR_FUNCTIONS(DryRun)

public:
    /**
     * Has @p options name copies from now on, and the sticks unplugged when the pass is over. On
     * failure returns false with a sentence for the user in @p error.
     */
    bool redirect(Options &options, QString *error);

    /// Sentences on what the sticks themselves would not have let happen.
    const QStringList &cautions() const { return m_cautions; }

private:
    void lookAtStick(const QString &stick);
    bool copyFiles(const QString &from, const QStringList &names, const QString &to,
                   QString *error) const;

    QTemporaryDir m_folder;
    QStringList m_cautions;
};

} // namespace bench
