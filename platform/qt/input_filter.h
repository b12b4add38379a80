// The layer's first look at every event of the application.
#pragma once

class QEvent;
class QObject;

// True when the event is done with.
bool FilterInput(QObject* receiver, QEvent* event);
