#pragma once

class QHelpEvent;
class QString;
class QWidget;

/// Shows, as the tool tip that the event asks for, a text that does not fit into its widget, followed by the
/// widget's own tool tip. Plain text only.
void showWholeTextTip(const QHelpEvent &event, const QString &text, QWidget &widget);
