#pragma once

class QButtonGroup;

/// Lets the Tab key visit the checked button of the group, now and whenever another one is checked. Until
/// one had the focus the toolkit goes to the first. Without a checked button it still does.
void tabToChecked(QButtonGroup &group);
