;; What a user of Emacs does in a template, with the configuration of the manual. Prints the outcome as JSON.
;; Run by emacs.test.js, in a folder with the templates that it makes.

(require 'package)
(package-initialize)
(require 'json)
(load (getenv "TEMPLATE_CONFIGURATION") nil t)

(defvar outcome nil)

(defun finish (&optional what)
  (when what (push (cons 'failed what) outcome))
  (princ (concat (json-encode (reverse outcome)) "\n"))
  (kill-emacs (if what 1 0)))

(defun wait (what condition)
  (let ((until (+ (float-time) 20)))
    (while (not (funcall condition))
      (when (> (float-time) until) (finish what))
      (accept-process-output nil 0.02))))

(defun findings ()
  (mapcar (lambda (each)
            (let ((from (flymake-diagnostic-beg each)))
              (save-excursion
                (goto-char from)
                (format "%d:%d-%d %s" (1- (line-number-at-pos)) (- from (line-beginning-position))
                        (- (flymake-diagnostic-end each) (line-beginning-position))
                        ;; "template [code]: message"
                        (replace-regexp-in-string "^template \\[\\(.*?\\)\\]: .*\\|^template: " "\\1"
                                                  (flymake-diagnostic-text each))))))
          (sort (copy-sequence (flymake-diagnostics))
                (lambda (a b) (string< (flymake-diagnostic-text a) (flymake-diagnostic-text b))))))

(defun visit (name)
  (switch-to-buffer (find-file-noselect name))
  ;; Nobody types here: what waits for a key comes at once.
  (run-hooks 'post-command-hook)
  (wait "server" #'eglot-managed-p))

(visit "page.tpl")
(flymake-start)
(wait "findings" #'flymake-diagnostics)
(push (cons 'findings (findings)) outcome)

;; typed, not saved
(goto-char (point-min))
(search-forward "{0::x}")
(replace-match "{title}")
(eglot--signal-textDocument/didChange)
(wait "no findings" (lambda () (null (flymake-diagnostics))))

(search-forward "{include pa")
(xref-find-definitions "LSP identifier at point.")
(push (cons 'definition (buffer-name)) outcome)
(visit "part.tpl")
(flymake-start)
(wait "findings of the include" #'flymake-diagnostics)
(push (cons 'include (findings)) outcome)

(visit "page.tpl")
(goto-char (point-max))
(insert "ü😀{htmlspecialchars user::")
(push (cons 'completion
            (let ((found (eglot-completion-at-point)))
              (all-completions "" (nth 2 found))))
      outcome)

(goto-char (point-min))
(search-forward "{dynamic r")
(eglot-rename "item")
(push (cons 'renamed (concat (buffer-substring (line-beginning-position) (line-end-position)) " "
                             (with-current-buffer "part.tpl"
                               (string-trim (buffer-string)))))
      outcome)
(finish)
