#pragma once

/// Whether standard error is a terminal that a person looks at.
bool standardErrorIsTerminal();

/// Whether a GUI can be shown as the environment stands.
bool hasDisplay();
