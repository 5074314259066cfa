#include "files.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace {

const char panelSection[] = R"([Panel]
mode = 1                        ; panel parameters are taken over
size = 10.1                     ; inches
vcom = 56                       ; duty
avdd = 48                       ; duty
backlight_steps = 0,12,24,40,60,84,112,144,176,212,255 ; one for each step
backlight_day = 200             ; 0 to 255
backlight_night = 80            ; 0 to 255
hicar_physical_w = 223          ; mm
hicar_physical_h = 126          ; mm
physical_w(7.0) = 154           ; mm
physical_h(7.0) = 86            ; mm
physical_w(8.0) = 176           ; mm
physical_h(8.0) = 99            ; mm
physical_w(9.0) = 197           ; mm
physical_h(9.0) = 111           ; mm
physical_w(10.1) = 223          ; mm
physical_h(10.1) = 126          ; mm
physical_w(12.3) = 292          ; mm
physical_h(12.3) = 110          ; mm
supplier = "panel 10.1, glossy" ; for the log of the line

[SN]
mode = 1
length = 12
startwith = "HU0,HU1"
)";

QByteArray serial(int number)
{
    return "HU" + QByteArray::number(number).rightJustified(10, '0');
}

} // namespace

FileGenerator::FileGenerator(int serials, SerialLine line, SerialComments comments)
    : serials(serials)
    , line(line)
    , comments(comments)
{
}

QString FileGenerator::makeFile()
{
    const QString folder = directory.filePath(QString::number(++files));
    QDir().mkpath(folder);
    QFile file(folder + QLatin1String("/production.ini"));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("%s: %s", qUtf8Printable(file.fileName()), qUtf8Printable(file.errorString()));
    file.write(panelSection);
    for (int number = 0; number < serials; ++number)
        file.write(serialLine(number));
    if (!file.flush() || ::fsync(file.handle()) != 0)
        qFatal("%s cannot be written", qUtf8Printable(file.fileName()));
    return file.fileName();
}

QByteArray FileGenerator::serialLine(int number) const
{
    QByteArray text = serial(number);
    if (line == SerialLine::WithEqualsSign)
        text += '=';
    if (comments == SerialComments::OneInTen && number % 10 == 0)
        text += " ; batch " + QByteArray::number(number / 1000);
    return text + "\r\n";
}

QByteArray firstSerial()
{
    return serial(0);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
