# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""What the model is to learn, one module for each family of tasks. TASKS in each says what makes an example."""
