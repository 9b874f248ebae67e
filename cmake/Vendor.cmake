# The maker's particulars, all of them; placeholders until there is a maker.
set(KESTROVAN_DEVELOPER_NAME "The Kestrovan Developers" CACHE STRING "The developer's name in the about texts")
set(KESTROVAN_COMPANY_NAME "Kestrovan" CACHE STRING "The company's name in the about texts")
set(KESTROVAN_WEBSITE_HOST "www.kestrovan.example" CACHE STRING "The host of the vendor's website")
set(KESTROVAN_UPDATE_HOST "updates.kestrovan.example" CACHE STRING "The host of the update manifest")
set(KESTROVAN_APPLICATION_ID "example.kestrovan.Kestrovan" CACHE STRING "The reverse-DNS name of the program")
