#pragma once

#include <QIcon>
#include <QLatin1String>
#include <QUrl>

namespace kelvane {

constexpr QLatin1String kProductName("Kelvane");

// The icon of all windows, in sizes from 16 to 128 pixels.
QIcon ProductIcon();

// The maker's web pages, at the address that the build was configured with.
QUrl UpdatesPage();
QUrl DonationPage();

}  // namespace kelvane
