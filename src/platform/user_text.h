#pragma once

#include <QCoreApplication>

/// The texts that a user reads, outside of classes that have a `tr` of their own. They are written
/// in Italian, the source language, in UTF-8; a translation needs no change of the code.
///
/// A text in a table is marked with `QT_TRANSLATE_NOOP("UserText", "…")` and shown by `tr`.
class UserText {
    Q_DECLARE_TR_FUNCTIONS(UserText)
};
