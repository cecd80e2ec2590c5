// What commands may change, judged by the script's text.

#include <gtest/gtest.h>

#include "workshop/CluiEffects.h"

namespace {

TEST(Effects, FollowsNames) {
  const struct {
    const char* script;
    const char* code;
    unsigned effects;
  } cases[] = {
      {"", "(display \"clui-push\")", 0},
      {"", "(begin (clui-push p) (clui-set-variable p \"v\" 1))",
       CluiChangesSyntax | CluiChangesVariables},
      {"(define (a) (b)) (define (b) (a) (clui-set-alias p \"x\" \"y\"))", "(a)", CluiChangesWords},
      {"(define (a) ; (clui-push p)\n #| (clui-push p) |# 'clui-push)", "(a)", 0},
      {"(define (a text) (display text)) (define (text) (clui-push p))", "(a 1)", 0},
      {"(define (a) (let ((b (clui-pop p)) (c 1)) c)) (define (c) (clui-token p \"x\"))", "(a)",
       CluiChangesSyntax},
      {"(define id (clui-token p \"go\"))", "(show id)", 0},
      {"(define table (list push)) (define (push) (clui-push p))", "((car table))",
       CluiChangesSyntax},
      {"(define hook #f) (define (go) (set! hook (lambda () (clui-pop p))))", "(hook)",
       CluiChangesSyntax},
      {"(define t (make-hash-table)) (hash-set! t 'x (lambda () (clui-pop p)))",
       "((hash-ref t 'x))", CluiChangesSyntax},
      {"(keep! (lambda () (clui-pop p)))", "(display 1)", CluiChangesSyntax},
      {"(for-each (lambda (name) (clui-token p name)) '(\"a\" \"b\"))", "(display 1)", 0},
      {"(define clui-push (let ((old clui-push)) (lambda (p) (old p))))", "(clui-push p)",
       CluiChangesSyntax},
      {"", "(eval-string (token-argument $p -1 0))", CluiChangesAnything},
      {"(use-modules (ice-9 match) ((srfi srfi-1) #:select (fold)))", "(f)", 0},
      {"(use-modules (our tools))", "(f)", CluiChangesAnything},
      {"(load (string-append folder \"x.scm\"))", "(f)", CluiChangesAnything},
      {"(load \"/no/such/file.scm\")", "(f)", CluiChangesAnything},
      {"(define (a) (clui-push p", "(a)", 0},  // Scheme refuses to load it
      {"\"", "#| ' #\\", 0},
  };
  for (const auto& row : cases) {
    CluiEffects effects;
    effects.readText(row.script, "");
    EXPECT_EQ(effects.of(row.code), row.effects) << row.script << " | " << row.code;
  }
}

TEST(Effects, CountsTheNamesInTemplates) {
  CluiEffects effects;
  effects.readText("(define (a) (clui-pop p)) (define s (string-append \"(begin (a) \" end))", "");
  EXPECT_EQ(effects.ofAny(), CluiChangesSyntax);
}

}  // namespace
