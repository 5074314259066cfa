#include "translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>

namespace production {

void loadTranslation(const QString &name)
{
    // Relative to the program, so that an installed tree may be moved.
    const QString own = QCoreApplication::applicationDirPath() + QLatin1Char('/')
        + QStringLiteral(PRODUCTION_TRANSLATIONS);
    const QString qt = QLibraryInfo::location(QLibraryInfo::TranslationsPath);

    auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
    const auto isIn = [&](const QString &folder, const QLocale &locale) {
        return translator->load(locale, name, QStringLiteral("_"), folder);
    };
    // The texts in the sources are English, but for its plurals.
    if (isIn(own, QLocale()) || isIn(qt, QLocale()) || isIn(own, QLocale(QLocale::English)))
        QCoreApplication::installTranslator(translator.release());
}

} // namespace production
