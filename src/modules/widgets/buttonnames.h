#pragma once

class QDialogButtonBox;

/// Gives the Ok and the Cancel button of a form's button box the names "okButton" and "cancelButton", and
/// their accessible names; the form cannot.
void nameButtons(const QDialogButtonBox &box);
