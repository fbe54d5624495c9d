#include "platform/linux/ChordKeys.h"

#include <linux/input-event-codes.h>

ChordKeys chordKeys(PasteChord chord)
{
    switch (chord) {
    case PasteChord::ControlV:
        break;
    case PasteChord::ControlShiftV:
        return {{KEY_LEFTCTRL, KEY_LEFTSHIFT}, KEY_V};
    case PasteChord::ShiftInsert:
        return {{KEY_LEFTSHIFT}, KEY_INSERT};
    }
    return {{KEY_LEFTCTRL}, KEY_V};
}
