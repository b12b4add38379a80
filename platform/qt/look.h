// One plain grey look for all windows of the layer, whatever the host looks like.
#pragma once

class QWidget;

void ApplyLook(QWidget& widget);
