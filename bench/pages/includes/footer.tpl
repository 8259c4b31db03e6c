<p class="small">{htmlspecialchars footer_title} - {footer_text} - <a href="{footer_url}">Imprint and privacy</a></p>
