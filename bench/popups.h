#pragma once

#include <QString>

namespace bench {

/// What a pop-up's message type code stands for.
struct PopupKind
{
    enum Tone { Progress, Success, Trouble };

    QString name; ///< a few words; what the operator reads when the message has no text
    Tone tone;
};

/// The meaning of the message type code @p code; "message" for a code that is not known.
PopupKind popupKind(int code);

} // namespace bench
