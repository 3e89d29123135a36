# What a distributor changes: addresses, names and hosts, compiled in by way of base/Deployment.h.
set(TONELIFT_WEB_ADDRESS "https://www.tonelift.example" CACHE STRING "The product's website")
set(TONELIFT_SUPPORT_ADDRESS "support@tonelift.example" CACHE STRING "The support mail address")
set(TONELIFT_REPORT_ADDRESS "errors@tonelift.example" CACHE STRING "The address for error reports")
set(TONELIFT_INSTALLER_ADDRESS "https://www.tonelift.example/tonelift-setup.exe" CACHE STRING
  "The web address of the program's installer")
set(TONELIFT_WMFDIST_ADDRESS "https://www.tonelift.example/download/wmfdist.exe" CACHE STRING
  "The web address of the Windows Media Format 9.0 installer")
set(TONELIFT_WMFDIST7_ADDRESS "https://www.tonelift.example/download/wmfdist7.exe" CACHE STRING
  "The web address of the Windows Media Format 7.1 installer")
set(TONELIFT_FREEDB_NAME "freedb.org" CACHE STRING "The FreeDB service's web name, as menus and boxes say it")
set(TONELIFT_FREEDB_CLIENT "Tonelift" CACHE STRING "The client name registered with the FreeDB service")
set(TONELIFT_FREEDB_VERSION "${PROJECT_VERSION}" CACHE STRING "The client version sent to the FreeDB service")
set(TONELIFT_FREEDB_HELLO_USER "anonymous" CACHE STRING "User part of the address in the service's greeting")
set(TONELIFT_FREEDB_HELLO_HOST "localhost" CACHE STRING "Host part of the address in the service's greeting")
set(TONELIFT_FREEDB_SUBMIT_MODE "submit" CACHE STRING "Submit-Mode of submissions: submit or test")
