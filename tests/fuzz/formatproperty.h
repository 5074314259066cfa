#pragma once

#include "settingsmap.h"

#include <QByteArray>
#include <QString>

/// What one read of a production file delivers.
struct FileContent
{
    bool readable = false;
    production::SettingsMap map;
    production::KeyComments comments;
};

FileContent readContent(const QByteArray &bytes);
QByteArray writtenContent(const FileContent &content);

/**
 * What must hold for every input of the settings format, whatever it is:
 *  - it is read as the plain implementation of the format reads it;
 *  - what was read successfully is the same after a rewrite and another read;
 *  - a second rewrite is byte-identical to the first;
 *  - a rewrite without one of the keys loses that key and nothing else;
 *  - where the plain layout can be read back, it is what is written (but for backslashes).
 *
 * Returns what is broken, or an empty text.
 */
QString brokenFormatProperty(const QByteArray &input);
