/* A stand-in for the eye tracker's client library with its published C
 * interface, for tests. The file named by ZIRVEL_STAND_IN_TRACKER scripts
 * it line by line, and it is read again before every sample, so a test
 * moves the gaze by rewriting it:
 *   device URL        a device the enumeration reports (in order)
 *   fail CALL         api_create, device_create or subscribe fails
 *   look X Y          samples are valid, at X, Y (0..1 of the display)
 *   look invalid      samples are invalid
 *   silent            no samples: every wait times out after 100 ms
 *   wait-errors N     the first N waits after subscribing fail
 *   log-samples       every sample is logged too ("sample X Y VALID")
 * Samples come every 10 ms. Every call but the waits and samples is
 * appended to the file's name + ".log", with the time of a monotonic
 * clock in milliseconds. Variants leave out entry points (CMakeLists.txt). */
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

#include "support/stand_in_call_log.h"

#ifdef _WIN32
static void SleepMilliseconds(int milliseconds) { Sleep((DWORD)milliseconds); }
#else
static void SleepMilliseconds(int milliseconds) {
    struct timespec pause = {milliseconds / 1000, (long)(milliseconds % 1000) * 1000000L};
    nanosleep(&pause, NULL);
}
#endif

/* tobii_error_t values (NO_ERROR and its kind are taken by windows.h). */
enum { TOBII_NO_ERROR = 0, TOBII_CONNECTION_FAILED = 5, TOBII_TIMED_OUT = 6, TOBII_INVALID_PARAMETER = 8 };
enum { SAMPLE_PERIOD = 10, MAX_DEVICES = 8, MAX_TEXT = 256 };

typedef struct tobii_gaze_point_t {
    int64_t timestamp_us;
    int validity;
    float position_xy[2];
} tobii_gaze_point_t;

typedef void (*tobii_device_url_receiver_t)(const char* url, void* user_data);
typedef void (*tobii_gaze_point_callback_t)(const tobii_gaze_point_t* gaze_point, void* user_data);

typedef struct Script {
    char devices[MAX_DEVICES][MAX_TEXT];
    int deviceCount;
    int failApiCreate, failDeviceCreate, failSubscribe;
    int invalid, silent, waitErrors, logSamples;
    float x, y;
} Script;

typedef struct tobii_api_t {
    int unused;
} tobii_api_t;

typedef struct tobii_device_t {
    tobii_gaze_point_callback_t callback;
    void* userData;
    int waitErrorsLeft;
    double nextSample;
} tobii_device_t;

static void ReadScript(Script* script) {
    memset(script, 0, sizeof *script);
    const char* path = getenv("ZIRVEL_STAND_IN_TRACKER");
    FILE* file = path ? fopen(path, "rb") : NULL;
    /* A test replaces the script by a rename, which Wine does in two steps:
       for a moment there is no file. Only a script that stays away counts
       as empty, or every sample then would be a valid one at (0, 0). */
    for (int tries = 0; path && !file && tries < 20; ++tries) {
        SleepMilliseconds(1);
        file = fopen(path, "rb");
    }
    if (!file) return;
    char line[MAX_TEXT + 16];
    while (fgets(line, sizeof line, file)) {
        line[strcspn(line, "\r\n")] = '\0';
        char call[32];
        if (strncmp(line, "device ", 7) == 0 && script->deviceCount < MAX_DEVICES) {
            snprintf(script->devices[script->deviceCount++], MAX_TEXT, "%s", line + 7);
        } else if (sscanf(line, "fail %31s", call) == 1) {
            if (strcmp(call, "api_create") == 0) script->failApiCreate = 1;
            if (strcmp(call, "device_create") == 0) script->failDeviceCreate = 1;
            if (strcmp(call, "subscribe") == 0) script->failSubscribe = 1;
        } else if (strcmp(line, "look invalid") == 0) {
            script->invalid = 1;
        } else if (sscanf(line, "look %f %f", &script->x, &script->y) == 2) {
            script->invalid = 0;
        } else if (strcmp(line, "silent") == 0) {
            script->silent = 1;
        } else if (strcmp(line, "log-samples") == 0) {
            script->logSamples = 1;
        } else {
            sscanf(line, "wait-errors %d", &script->waitErrors);
        }
    }
    fclose(file);
}

static void Log(const char* format, ...) {
    const char* path = getenv("ZIRVEL_STAND_IN_TRACKER");
    if (!path) return;
    char logPath[1100];
    snprintf(logPath, sizeof logPath, "%s.log", path);
    va_list arguments;
    va_start(arguments, format);
    AppendCallLine(logPath, format, arguments);
    va_end(arguments);
}

STAND_IN_EXPORT int tobii_api_create(tobii_api_t** api, const void* customAlloc, const void* customLog) {
    Script script;
    ReadScript(&script);
    Log("api_create %d %d", customAlloc != NULL, customLog != NULL);
    if (script.failApiCreate) return TOBII_CONNECTION_FAILED;
    *api = calloc(1, sizeof **api);
    return TOBII_NO_ERROR;
}

STAND_IN_EXPORT int tobii_api_destroy(tobii_api_t* api) {
    Log("api_destroy");
    free(api);
    return TOBII_NO_ERROR;
}

STAND_IN_EXPORT int tobii_enumerate_local_device_urls(tobii_api_t* api, tobii_device_url_receiver_t receiver,
                                                      void* userData) {
    (void)api;
    Script script;
    ReadScript(&script);
    Log("enumerate %d", script.deviceCount);
    for (int index = 0; index < script.deviceCount; ++index) receiver(script.devices[index], userData);
    return TOBII_NO_ERROR;
}

STAND_IN_EXPORT int tobii_device_create(tobii_api_t* api, const char* url, int fieldOfUse, tobii_device_t** device) {
    (void)api;
    Script script;
    ReadScript(&script);
    Log("device_create %s %d", url, fieldOfUse);
    if (script.failDeviceCreate) return TOBII_CONNECTION_FAILED;
    *device = calloc(1, sizeof **device);
    (*device)->waitErrorsLeft = script.waitErrors;
    return TOBII_NO_ERROR;
}

STAND_IN_EXPORT int tobii_device_destroy(tobii_device_t* device) {
    Log("device_destroy");
    free(device);
    return TOBII_NO_ERROR;
}

#ifndef STAND_IN_WITHOUT_OPTIONAL
STAND_IN_EXPORT int tobii_device_reconnect(tobii_device_t* device) {
    (void)device;
    Log("reconnect");
    return TOBII_NO_ERROR;
}

STAND_IN_EXPORT int tobii_gaze_point_unsubscribe(tobii_device_t* device) {
    device->callback = NULL;
    Log("unsubscribe");
    return TOBII_NO_ERROR;
}
#endif

STAND_IN_EXPORT int tobii_gaze_point_subscribe(tobii_device_t* device, tobii_gaze_point_callback_t callback,
                                               void* userData) {
    Script script;
    ReadScript(&script);
    Log("subscribe");
    if (script.failSubscribe) return TOBII_CONNECTION_FAILED;
    device->callback = callback;
    device->userData = userData;
    return TOBII_NO_ERROR;
}

STAND_IN_EXPORT int tobii_wait_for_callbacks(int deviceCount, tobii_device_t* const* devices) {
    if (deviceCount != 1 || !devices || !devices[0]) return TOBII_INVALID_PARAMETER;
    tobii_device_t* device = devices[0];
    if (device->waitErrorsLeft > 0) {
        --device->waitErrorsLeft;
        Log("wait_error");
        SleepMilliseconds(SAMPLE_PERIOD);
        return TOBII_CONNECTION_FAILED;
    }
    Script script;
    ReadScript(&script);
    if (script.silent) {
        SleepMilliseconds(100);
        return TOBII_TIMED_OUT;
    }
    const double wait = device->nextSample - NowMilliseconds();
    if (wait > 0) SleepMilliseconds((int)wait + 1);
    device->nextSample = NowMilliseconds() + SAMPLE_PERIOD;
    return TOBII_NO_ERROR;
}

#ifndef STAND_IN_WITHOUT_PROCESS_CALLBACKS
STAND_IN_EXPORT int tobii_device_process_callbacks(tobii_device_t* device) {
    if (!device->callback) return TOBII_NO_ERROR;
    Script script;
    ReadScript(&script);
    tobii_gaze_point_t sample;
    sample.timestamp_us = (int64_t)(NowMilliseconds() * 1000.0);
    sample.validity = script.invalid ? 0 : 1;
    sample.position_xy[0] = script.x;
    sample.position_xy[1] = script.y;
    if (script.logSamples) Log("sample %.4f %.4f %d", script.x, script.y, sample.validity);
    device->callback(&sample, device->userData);
    return TOBII_NO_ERROR;
}
#endif
