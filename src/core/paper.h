#pragma once

/// The sizes of paper that sheet music is laid out for.
enum class Paper { A4, Letter };

/// The paper that is usual where the user lives.
Paper usualPaper();
