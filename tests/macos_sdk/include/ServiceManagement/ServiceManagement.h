#pragma once

#import <ServiceManagement/SMAppService.h>
#import <ServiceManagement/SMErrors.h>
