/* A stand-in for the speech recogniser library with its published C
 * interface, for tests. Its "model" is a folder holding stand-in.txt, which
 * scripts it line by line:
 *   reject WORD          the vocabulary lookup does not know WORD
 *   result TEXT          the next final result (in order, one per line)
 *   every N              a final result after every N blocks (default 1)
 *   after-speech         a final result only after at least two loud
 *                        blocks followed by three quiet ones (300 ms of
 *                        silence): real speech went in and ended
 *   fail-create          recogniser creation answers null
 *   fault CALL N         the N-th call of CALL (accept, set_grm, new_grm)
 *                        faults with an access violation
 * Every call is appended to calls.log in the folder, with the time of a
 * monotonic clock in milliseconds, so a test sees what reached it; an
 * accepted block is logged as "accept BYTES PEAK FIRST-LOUD-SAMPLE".
 * Variants leave out entry points (see CMakeLists.txt). */
#include <stdlib.h>
#include <string.h>

#include "support/stand_in_call_log.h"

#define MAX_ITEMS 64
#define MAX_TEXT 256
#define LOUD_PEAK 2000
#define END_OF_SPEECH_BLOCKS 3

typedef struct VoskModel {
    char folder[1024];
    char rejected[MAX_ITEMS][MAX_TEXT];
    int rejectedCount;
    char results[MAX_ITEMS][MAX_TEXT];
    int resultCount;
    int nextResult;
    int every;
    int afterSpeech;
    int failCreate;
    int faultAccept, faultSetGrm, faultNewGrm;
    int acceptCalls, setGrmCalls, newGrmCalls;
} VoskModel;

typedef struct VoskRecognizer {
    VoskModel* model;
    int blocks;
    int loudBlocks;
    int quietBlocks;
    char result[MAX_TEXT + 32];
} VoskRecognizer;

static void Log(const VoskModel* model, const char* format, ...) {
    char path[1100];
    snprintf(path, sizeof path, "%s/calls.log", model->folder);
    va_list arguments;
    va_start(arguments, format);
    AppendCallLine(path, format, arguments);
    va_end(arguments);
}

static void Fault(void) {
    volatile int* nowhere = NULL;
    *nowhere = 1;
}

static void CopyText(char* target, const char* text) {
    snprintf(target, MAX_TEXT, "%s", text);
    target[strcspn(target, "\r\n")] = '\0';
}

STAND_IN_EXPORT void vosk_set_log_level(int level) { (void)level; }

STAND_IN_EXPORT VoskModel* vosk_model_new(const char* path) {
    char scriptPath[1100];
    snprintf(scriptPath, sizeof scriptPath, "%s/stand-in.txt", path);
    FILE* script = fopen(scriptPath, "rb");
    if (!script) return NULL;
    VoskModel* model = calloc(1, sizeof *model);
    snprintf(model->folder, sizeof model->folder, "%s", path);
    model->every = 1;
    char line[MAX_TEXT + 16];
    while (fgets(line, sizeof line, script)) {
        char call[32];
        int number;
        if (strncmp(line, "reject ", 7) == 0 && model->rejectedCount < MAX_ITEMS) {
            CopyText(model->rejected[model->rejectedCount++], line + 7);
        } else if (strncmp(line, "result ", 7) == 0 && model->resultCount < MAX_ITEMS) {
            CopyText(model->results[model->resultCount++], line + 7);
        } else if (sscanf(line, "every %d", &number) == 1 && number > 0) {
            model->every = number;
        } else if (strncmp(line, "after-speech", 12) == 0) {
            model->afterSpeech = 1;
        } else if (strncmp(line, "fail-create", 11) == 0) {
            model->failCreate = 1;
        } else if (sscanf(line, "fault %31s %d", call, &number) == 2) {
            if (strcmp(call, "accept") == 0) model->faultAccept = number;
            if (strcmp(call, "set_grm") == 0) model->faultSetGrm = number;
            if (strcmp(call, "new_grm") == 0) model->faultNewGrm = number;
        }
    }
    fclose(script);
    Log(model, "model_new %s", path);
    return model;
}

STAND_IN_EXPORT void vosk_model_free(VoskModel* model) {
    if (!model) return;
    Log(model, "model_free");
    free(model);
}

#ifndef STAND_IN_WITHOUT_FIND_WORD
STAND_IN_EXPORT int vosk_model_find_word(VoskModel* model, const char* word) {
    for (int index = 0; index < model->rejectedCount; ++index) {
        if (strcmp(model->rejected[index], word) == 0) return -1;
    }
    return 1;
}
#endif

STAND_IN_EXPORT VoskRecognizer* vosk_recognizer_new_grm(VoskModel* model, float sampleRate, const char* grammar) {
    ++model->newGrmCalls;
    Log(model, "new_grm %.0f %s", (double)sampleRate, grammar);
    if (model->newGrmCalls == model->faultNewGrm) Fault();
    if (model->failCreate) return NULL;
    VoskRecognizer* recognizer = calloc(1, sizeof *recognizer);
    recognizer->model = model;
    return recognizer;
}

#ifndef STAND_IN_WITHOUT_SET_GRM
STAND_IN_EXPORT void vosk_recognizer_set_grm(VoskRecognizer* recognizer, const char* grammar) {
    VoskModel* model = recognizer->model;
    ++model->setGrmCalls;
    Log(model, "set_grm %s", grammar);
    if (model->setGrmCalls == model->faultSetGrm) Fault();
}
#endif

/* The block's loudest sample, and the index of its first loud sample (-1
 * when none is loud): where in the block a sound began. */
static int Peak(const char* data, int length, int* firstLoud) {
    int peak = 0;
    *firstLoud = -1;
    for (int index = 0; index + 1 < length; index += 2) {
        const short sample = (short)((unsigned char)data[index] | ((unsigned char)data[index + 1] << 8));
        const int magnitude = sample < 0 ? -sample : sample;
        if (magnitude > peak) peak = magnitude;
        if (magnitude >= LOUD_PEAK && *firstLoud < 0) *firstLoud = index / 2;
    }
    return peak;
}

STAND_IN_EXPORT int vosk_recognizer_accept_waveform(VoskRecognizer* recognizer, const char* data, int length) {
    VoskModel* model = recognizer->model;
    ++model->acceptCalls;
    int firstLoud;
    const int peak = Peak(data, length, &firstLoud);
    Log(model, "accept %d %d %d", length, peak, firstLoud);
    if (model->acceptCalls == model->faultAccept) Fault();
    int ready;
    if (model->afterSpeech) {
        if (peak >= LOUD_PEAK) {
            ++recognizer->loudBlocks;
            recognizer->quietBlocks = 0;
            return 0;
        }
        /* The end of an utterance, as a recogniser's end-pointing hears it:
         * a pause between words is not yet the end. */
        if (++recognizer->quietBlocks < END_OF_SPEECH_BLOCKS) return 0;
        ready = recognizer->loudBlocks >= 2;
        recognizer->loudBlocks = 0;
    } else {
        ready = ++recognizer->blocks % model->every == 0;
    }
    if (!ready || model->nextResult >= model->resultCount) return 0;
    snprintf(recognizer->result, sizeof recognizer->result, "{\n  \"text\" : \"%s\"\n}",
             model->results[model->nextResult++]);
    return 1;
}

#ifndef STAND_IN_WITHOUT_RESULT
STAND_IN_EXPORT const char* vosk_recognizer_result(VoskRecognizer* recognizer) {
    Log(recognizer->model, "result %s", recognizer->result);
    return recognizer->result;
}
#endif

STAND_IN_EXPORT void vosk_recognizer_free(VoskRecognizer* recognizer) {
    if (!recognizer) return;
    Log(recognizer->model, "free_recognizer");
    free(recognizer);
}
