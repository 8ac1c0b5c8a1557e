// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QQmlNetworkAccessManagerFactory>

namespace lumora {

/// Gives the views a network that refuses every request, so that nothing they show can reach one.
class RefusingNetwork : public QQmlNetworkAccessManagerFactory
{
public:
    QNetworkAccessManager *create(QObject *parent) override;
};

} // namespace lumora
