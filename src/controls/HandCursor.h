#pragma once

class QWidget;

/// Gives a control the program's hand cursor, a custom pointer.
void SetHandCursor(QWidget *control);
