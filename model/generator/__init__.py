# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Makes the conversations that the built-in model is trained and measured on. README.md has their form."""
