#pragma once

#include <QStringList>

class QWidget;

/// The enabled controls in view of which the text is not 4.5 times as bright or dark as what lies
/// behind it, or the edge, box or thumb not 3 times as what lies around it.
QStringList pale(QWidget& window);
