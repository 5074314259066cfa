#pragma once

#include <QString>
#include <QTemporaryDir>

/// How a serial stands in its line.
enum class SerialLine {
    Bare, ///< as our format has it
    WithEqualsSign, ///< as other INI formats demand it
};

enum class SerialComments { None, OneInTen };

/**
 * Generates the measured files: a Panel section of 20 keys with comments and an SN section with a
 * pool of a given size, in ascending order. The same numbers give the same bytes.
 */
class FileGenerator
{
public:
    explicit FileGenerator(int serials, SerialLine line = SerialLine::Bare,
                           SerialComments comments = SerialComments::None);

    /**
     * Writes the file once more, under a path of its own: QSettings takes the keys of a path that
     * it knows from its cache. The file is on the disk, so that nobody else's flush has to wait for
     * it. It lives as long as the generator.
     */
    QString makeFile();

private:
    QByteArray serialLine(int number) const;

    const int serials;
    const SerialLine line;
    const SerialComments comments;
    QTemporaryDir directory;
    int files = 0;
};

/// The serial that the next unit takes from a generated file.
QByteArray firstSerial();

/// The whole content of @p path.
QByteArray contentOf(const QString &path);
