#include "desktop/Keys.h"

#include "forms/Control.h"

int KeyCode(int key)
{
    if (key >= Qt::Key_F1 && key <= Qt::Key_F16) return F1Key + key - Qt::Key_F1;
    switch (key) {
    case Qt::Key_Left: return LeftKey;
    case Qt::Key_Up: return UpKey;
    case Qt::Key_Right: return RightKey;
    case Qt::Key_Down: return DownKey;
    default: break;
    }
    // Some characters share their numbers with the keys above; nobody asks for them.
    const bool letterOrDigit = (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9);
    return letterOrDigit || key == Qt::Key_Space ? key : 0;
}
