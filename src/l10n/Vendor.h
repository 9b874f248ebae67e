#pragma once

/// The maker's particulars. The build sets them in one place (cmake/Vendor.cmake); nothing else names the maker.
namespace kestrovan::vendor {

inline constexpr const char* developerName = KESTROVAN_DEVELOPER_NAME;
inline constexpr const char* companyName = KESTROVAN_COMPANY_NAME;
inline constexpr const char* websiteHost = KESTROVAN_WEBSITE_HOST;
inline constexpr const char* websiteAddress = "https://" KESTROVAN_WEBSITE_HOST;
inline constexpr const char* updateHost = KESTROVAN_UPDATE_HOST;
/// The reverse-DNS name of the program on D-Bus and among desktop entries.
inline constexpr const char* applicationId = KESTROVAN_APPLICATION_ID;

} // namespace kestrovan::vendor
