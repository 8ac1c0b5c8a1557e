# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Documents that somebody might have imported, and what the search tool finds in them."""
