#pragma once

#define IBAction void
#define APPKIT_EXTERN extern "C"
